#include "platform/simulated/preferences_domain.h"

#include "platform/simulated/property_list.h"
#include "platform/simulated/report.h"

#include <future>

namespace zorvane::platform::simulated
{

namespace
{

using Kind = FileContents::Kind;

/** The dictionary that a file's bytes hold; nothing if they are damaged. */
std::optional<QVariantMap> dictionaryIn(const QByteArray &bytes)
{
    const QVariant root = readPropertyList(bytes);
    if (root.metaType() != QMetaType::fromType<QVariantMap>())
        return std::nullopt;
    return root.toMap();
}

void reportFailure(const std::filesystem::path &file, const QString &error)
{
    qCCritical(simulatedSystem).noquote() << textOf(file) << "cannot be written:" << error;
}

QVariantMap::iterator largest(QVariantMap &values)
{
    const auto size = [](auto value) {
        return writePropertyList({{value.key(), value.value()}}).size();
    };
    auto result = values.begin();
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (size(value) > size(result))
            result = value;
    }
    return result;
}

/** Puts @p changes into @p values, except the largest if the file could not be read again with
 * them: kept for the next attempt, they would hold up everything that is set later. Returns the
 * file. */
QByteArray insertFitting(
    QVariantMap changes, QVariantMap &values, const std::filesystem::path &file)
{
    const QVariantMap before = values;
    for (;;) {
        values.insert(changes);
        QByteArray bytes = writePropertyList(values);
        if (bytes.size() <= propertyListSizeLimit || changes.isEmpty())
            return bytes;
        const auto tooLarge = largest(changes);
        reportFailure(file,
            QStringLiteral("the value of %1 is too large to be read again").arg(tooLarge.key()));
        changes.erase(tooLarge);
        values = before;
    }
}

} // namespace

PreferencesDomain::PreferencesDomain(std::filesystem::path file)
    : m_file(std::move(file))
{
}

PreferencesDomain::~PreferencesDomain()
{
    const std::lock_guard lock(m_mutex);
    // What could not be written is tried a last time; the disk may have room again.
    if (!m_changes.isEmpty())
        addWriteJob();
}

QVariant PreferencesDomain::value(const QString &key) const
{
    const std::lock_guard lock(m_mutex);
    if (const auto found = m_changes.constFind(key); found != m_changes.constEnd())
        return *found;
    if (const auto found = m_inFlight.constFind(key); found != m_inFlight.constEnd())
        return *found;
    // While the writer works the file is about to change; what it writes is taken over from it.
    if (m_inFlight.isEmpty() && stampOf(m_file) != m_stored.stamp)
        m_stored = read();
    return m_stored.values.value(key);
}

void PreferencesDomain::set(const QString &key, const QVariant &value)
{
    const std::lock_guard lock(m_mutex);
    m_changes.insert(key, value);
    addWriteJob();
}

void PreferencesDomain::synchronize()
{
    std::promise<void> written;
    {
        const std::lock_guard lock(m_mutex);
        if (m_writer || !m_changes.isEmpty()) {
            addWriteJob();
            m_writer->add([&written] { written.set_value(); });
        } else {
            written.set_value();
        }
    }
    written.get_future().wait();
    const std::lock_guard lock(m_mutex);
    if (stampOf(m_file) != m_stored.stamp)
        m_stored = read();
}

PreferencesDomain::Stored PreferencesDomain::read() const
{
    const FileContents contents = readFile(m_file);
    if (contents.kind == Kind::Absent)
        return {};
    if (contents.kind == Kind::Unreadable) {
        qCWarning(simulatedSystem).noquote()
            << textOf(m_file) << "cannot be read and counts as absent:" << contents.error;
        return {{}, stampOf(m_file)};
    }
    const auto values = dictionaryIn(contents.bytes);
    if (!values)
        qCWarning(simulatedSystem).noquote()
            << textOf(m_file) << "holds no dictionary and counts as absent";
    return {values.value_or(QVariantMap()), contents.stamp};
}

void PreferencesDomain::addWriteJob()
{
    if (!m_writer)
        m_writer = std::make_unique<ThreadQueue>("zorvane.prefs");
    m_writer->add([this] { writeChanges(); });
}

void PreferencesDomain::writeChanges()
{
    QVariantMap changes;
    {
        const std::lock_guard lock(m_mutex);
        if (m_changes.isEmpty())
            return;
        m_inFlight = std::exchange(m_changes, {});
        changes = m_inFlight;
    }
    auto written = write(changes);
    const std::lock_guard lock(m_mutex);
    m_inFlight.clear();
    if (written) {
        m_stored = std::move(*written);
        return;
    }
    // Kept for the next attempt, under what was set meanwhile.
    for (auto change = changes.constBegin(); change != changes.constEnd(); ++change) {
        if (!m_changes.contains(change.key()))
            m_changes.insert(change.key(), change.value());
    }
}

std::optional<PreferencesDomain::Stored> PreferencesDomain::write(const QVariantMap &changes) const
{
    const auto failed = [this](const QString &error) {
        reportFailure(m_file, error);
        return std::nullopt;
    };
    if (const auto error = makeFolder(m_file.parent_path()))
        return failed(*error);
    const FileLock lock = FileLock::wait(lockPathOf(m_file));
    if (!lock.isHeld())
        return failed(lock.error());
    const FileContents contents = readFile(m_file);
    if (contents.kind == Kind::Unreadable)
        return failed(contents.error);
    auto values = contents.kind == Kind::Read ? dictionaryIn(contents.bytes) : QVariantMap();
    if (!values) {
        const auto aside = keepAside(m_file);
        if (!aside)
            return failed(QStringLiteral("the damaged file could not be kept aside"));
        qCWarning(simulatedSystem).noquote()
            << textOf(m_file) << "was damaged and is kept as" << textOf(*aside);
        values.emplace();
    }
    const QByteArray bytes = insertFitting(changes, *values, m_file);
    if (bytes.size() > propertyListSizeLimit)
        return read();
    if (const auto error = replaceFile(m_file, bytes))
        return failed(*error);
    return Stored{std::move(*values), stampOf(m_file)};
}

} // namespace zorvane::platform::simulated
