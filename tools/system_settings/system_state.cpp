#include "tools/system_settings/system_state.h"

#include "platform/simulated/json_file.h"

namespace zorvane::tools
{

namespace
{

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace platform::simulated;

// Other programs change the files at any time; looking at their stamps costs next to nothing.
constexpr auto refreshInterval = 300ms;

SystemState::Approval approvalOf(const Behaviour &behaviour)
{
    switch (behaviour.approval) {
    case Approval::Granted:
        return SystemState::Approval::Granted;
    case Approval::Ask:
        return SystemState::Approval::Ask;
    case Approval::Denied:
        break;
    }
    return SystemState::Approval::Denied;
}

} // namespace

SystemState::SystemState(std::filesystem::path folder)
    : m_system(std::make_shared<SimulatedSystem>(std::move(folder)))
{
    refresh();
    connect(&m_timer, &QTimer::timeout, this, &SystemState::refresh);
    m_timer.start(refreshInterval);
}

QString SystemState::folder() const
{
    return textOf(m_system->folder());
}

int SystemState::identityCount() const
{
    return static_cast<int>(filter().vendorList(u"blockedCodeIdentities"_s).size());
}

int SystemState::applicationCount() const
{
    return static_cast<int>(filter().vendorList(u"blockedApplicationPaths"_s).size());
}

void SystemState::allow()
{
    decide({.approved = true, .active = isActive()});
}

void SystemState::block()
{
    decide({.approved = false, .active = false});
}

void SystemState::decide(const ExtensionState &state)
{
    const auto error = writeExtensionState(m_system->extensionFile(), state);
    m_shown.error = error ? u"This could not be stored: %1."_s.arg(*error) : QString();
    refresh();
    Q_EMIT changed();
}

void SystemState::refresh()
{
    Shown shown = m_shown;
    shown.approval = approvalOf(m_system->behaviour());
    readExtension(shown);
    readFilter(shown);
    if (shown == m_shown)
        return;
    m_shown = shown;
    Q_EMIT changed();
}

void SystemState::readExtension(Shown &shown)
{
    const auto stamp = stampOf(m_system->extensionFile());
    if (stamp == m_extensionStamp)
        return;
    m_extensionStamp = stamp;
    shown.extension = readExtensionState(m_system->extensionFile());
}

void SystemState::readFilter(Shown &shown)
{
    const auto stamp = stampOf(m_system->filterConfigurationFile());
    if (stamp == m_filterStamp)
        return;
    m_filterStamp = stamp;
    shown.filter = FilterConfiguration(
        readJsonFile(m_system->filterConfigurationFile()).value_or(QJsonObject()));
}

} // namespace zorvane::tools
