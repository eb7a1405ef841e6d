#include "platform/simulated/preferences.h"

#include "app/records/text.h"
#include "platform/simulated/preferences_domain.h"
#include "platform/simulated/report.h"
#include "platform/simulated/simulated_system.h"

namespace zorvane::platform::simulated
{

namespace
{

using namespace Qt::StringLiterals;

const QString standardDomain = u"dev.kestrelworks.Zorvane"_s;

/** The value if it is of just this type; the platform converts none of these. */
template <typename Value>
std::optional<Value> exactly(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<Value>())
        return std::nullopt;
    return value.value<Value>();
}

bool truthOfText(const QString &text)
{
    const QString begin = records::trimmed(text);
    QStringView rest = begin;
    if (rest.isEmpty())
        return false;
    if (u"TtYy"_s.contains(rest.front()))
        return true;
    if (rest.front() == u'+' || rest.front() == u'-')
        rest = rest.sliced(1);
    while (rest.startsWith(u'0'))
        rest = rest.sliced(1);
    return !rest.isEmpty() && rest.front() >= u'1' && rest.front() <= u'9';
}

bool isUsableName(const QString &name)
{
    constexpr qsizetype longestName = 200; // a file's name has 255 bytes, and gets a suffix
    return !name.isEmpty() && !name.startsWith(u'.') && !name.contains(u'/')
        && !name.contains(QChar::Null) && name.toUtf8().size() <= longestName
        && name != standardDomain;
}

} // namespace

bool truthOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::LongLong:
        return value.toLongLong() != 0;
    case QMetaType::Double:
        return value.toDouble() != 0;
    case QMetaType::QString:
        return truthOfText(value.toString());
    default:
        return false;
    }
}

FilePreferences::FilePreferences(std::shared_ptr<PreferencesDomain> domain)
    : m_domain(std::move(domain))
{
}

bool FilePreferences::contains(const QString &key) const
{
    return m_domain->value(key).isValid();
}

bool FilePreferences::boolean(const QString &key) const
{
    return truthOf(m_domain->value(key));
}

std::optional<QByteArray> FilePreferences::data(const QString &key) const
{
    return exactly<QByteArray>(m_domain->value(key));
}

std::optional<QDateTime> FilePreferences::date(const QString &key) const
{
    return exactly<QDateTime>(m_domain->value(key));
}

std::optional<QString> FilePreferences::string(const QString &key) const
{
    return exactly<QString>(m_domain->value(key));
}

void FilePreferences::setBoolean(const QString &key, bool value)
{
    m_domain->set(key, value);
}

void FilePreferences::setData(const QString &key, const QByteArray &value)
{
    m_domain->set(key, value);
}

void FilePreferences::setDate(const QString &key, const QDateTime &value)
{
    m_domain->set(key, value.toUTC());
}

void FilePreferences::setString(const QString &key, const QString &value)
{
    m_domain->set(key, value);
}

void FilePreferences::synchronize()
{
    m_domain->synchronize();
}

FilePreferencesSuites::FilePreferencesSuites(std::shared_ptr<const SimulatedSystem> system)
    : m_system(std::move(system))
{
}

std::unique_ptr<Preferences> FilePreferencesSuites::open(const QString &name)
{
    if (!isUsableName(name)) {
        qCWarning(simulatedSystem) << "No preferences can be named" << name;
        return nullptr;
    }
    const std::lock_guard lock(m_mutex);
    auto &domain = m_domains[name];
    if (!domain)
        domain = std::make_shared<PreferencesDomain>(m_system->preferencesFile(name));
    return std::make_unique<FilePreferences>(domain);
}

std::unique_ptr<Preferences> makeStandardPreferences(const SimulatedSystem &system)
{
    return std::make_unique<FilePreferences>(
        std::make_shared<PreferencesDomain>(system.preferencesFile(standardDomain)));
}

} // namespace zorvane::platform::simulated
