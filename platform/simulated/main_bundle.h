#pragma once

#include "platform/entitlements.h"
#include "platform/main_bundle.h"

namespace zorvane::platform::simulated
{

class SimulatedSystem;

/** The bundle that "system.json" says the program runs from; it need not exist. */
class SimulatedMainBundle final : public MainBundle
{
public:
    explicit SimulatedMainBundle(std::shared_ptr<const SimulatedSystem> system);

    [[nodiscard]] std::optional<QString> identifier() const override;
    [[nodiscard]] std::filesystem::path location() const override;
    [[nodiscard]] std::optional<QString> shortVersion() const override;
    [[nodiscard]] std::optional<QString> buildVersion() const override;

private:
    const std::shared_ptr<const SimulatedSystem> m_system;
};

/** The entitlements that "system.json" says that bundle has. */
class SimulatedEntitlements final : public Entitlements
{
public:
    explicit SimulatedEntitlements(std::shared_ptr<const SimulatedSystem> system);

    [[nodiscard]] std::optional<QStringList> applicationGroups() const override;

private:
    const std::shared_ptr<const SimulatedSystem> m_system;
};

} // namespace zorvane::platform::simulated
