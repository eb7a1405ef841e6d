#include "platform/simulated/simulated_system.h"

#include "platform/simulated/report.h"

#include <QFile>
#include <QStandardPaths>

namespace zorvane::platform::simulated
{

using namespace Qt::StringLiterals;

namespace
{

std::filesystem::path dataFolder()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return std::filesystem::path(QFile::encodeName(data).toStdString()) / "zorvane";
}

} // namespace

SimulatedSystem::SimulatedSystem(std::filesystem::path folder)
    : m_folder(std::move(folder))
    , m_behaviour(standardBehaviour())
{
}

std::filesystem::path SimulatedSystem::standardFolder()
{
    const QByteArray chosen = qgetenv("ZORVANE_SYSTEM_DIR");
    if (!chosen.isEmpty())
        return std::filesystem::absolute(chosen.toStdString());
    return dataFolder() / "system";
}

std::filesystem::path SimulatedSystem::setAsideFolder()
{
    return dataFolder() / "set-aside";
}

std::filesystem::path SimulatedSystem::preferencesFile(const QString &domain) const
{
    return m_folder / "preferences" / QFile::encodeName(domain + u".plist"_s).toStdString();
}

std::filesystem::path SimulatedSystem::filterConfigurationFile() const
{
    return m_folder / "filter-configuration.json";
}

std::filesystem::path SimulatedSystem::extensionFile() const
{
    return m_folder / "extension.json";
}

std::filesystem::path SimulatedSystem::notificationsFile() const
{
    return m_folder / "notifications.json";
}

Behaviour SimulatedSystem::behaviour() const
{
    const std::lock_guard lock(m_mutex);
    refresh();
    return m_behaviour;
}

std::optional<PlatformError> SimulatedSystem::takeFault(Operation operation)
{
    const std::lock_guard lock(m_mutex);
    refresh();
    for (Fault &fault : m_behaviour.faults) {
        if (fault.operation != operation || (fault.times && *fault.times <= 0))
            continue;
        if (fault.times)
            --*fault.times;
        return fault.error;
    }
    return std::nullopt;
}

void SimulatedSystem::refresh() const
{
    const std::filesystem::path file = m_folder / "system.json";
    FileContents contents = readFile(file);
    if (contents == m_contents)
        return;
    m_contents = std::move(contents);
    if (m_contents.kind == FileContents::Kind::Unreadable)
        qCWarning(simulatedSystem).noquote()
            << textOf(file) << "cannot be read and counts as absent:" << m_contents.error;
    m_behaviour = m_contents.kind == FileContents::Kind::Read
        ? readBehaviour(m_contents.bytes, textOf(file))
        : standardBehaviour();
}

} // namespace zorvane::platform::simulated
