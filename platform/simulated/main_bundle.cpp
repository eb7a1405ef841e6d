#include "platform/simulated/main_bundle.h"

#include "platform/simulated/simulated_system.h"

namespace zorvane::platform::simulated
{

SimulatedMainBundle::SimulatedMainBundle(std::shared_ptr<const SimulatedSystem> system)
    : m_system(std::move(system))
{
}

std::optional<QString> SimulatedMainBundle::identifier() const
{
    return m_system->behaviour().bundleIdentifier;
}

std::filesystem::path SimulatedMainBundle::location() const
{
    return m_system->behaviour().bundlePath;
}

std::optional<QString> SimulatedMainBundle::shortVersion() const
{
    return m_system->behaviour().shortVersion;
}

std::optional<QString> SimulatedMainBundle::buildVersion() const
{
    return m_system->behaviour().build;
}

SimulatedEntitlements::SimulatedEntitlements(std::shared_ptr<const SimulatedSystem> system)
    : m_system(std::move(system))
{
}

std::optional<QStringList> SimulatedEntitlements::applicationGroups() const
{
    return m_system->behaviour().applicationGroups;
}

} // namespace zorvane::platform::simulated
