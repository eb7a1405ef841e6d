#pragma once

#include "platform/filter_manager.h"
#include "platform/main_thread.h"
#include "platform/simulated/filter_configuration.h"

#include <functional>
#include <memory>

namespace zorvane::platform
{
class Scheduler;
class SerialQueue;
} // namespace zorvane::platform

namespace zorvane::platform::simulated
{

class SimulatedSystem;

/**
 * The filter configuration as a file of the state folder. Loads and saves run one after the other
 * on a thread of their own and are answered after a moment.
 */
class SimulatedFilterManager final : public FilterManager
{
public:
    /** The scheduler outlives this. */
    SimulatedFilterManager(std::shared_ptr<SimulatedSystem> system, Scheduler &scheduler);
    /** Finishes saves that were asked for; answers that are still due are dropped. */
    ~SimulatedFilterManager() override;

    void load(Completion done) override;
    void save(Completion done) override;

    [[nodiscard]] bool isEnabled() const override;
    void setEnabled(bool enabled) override;
    void setProviderConfiguration(const FilterProviderConfiguration &configuration) override;
    void setLocalizedDescription(const QString &description) override;

private:
    using Work = std::function<std::optional<PlatformError>()>;

    using Job = std::function<void()>;

    void run(Work work, Job succeeded, Completion done);
    [[nodiscard]] std::optional<PlatformError> loadNow(FilterConfiguration &loaded) const;
    [[nodiscard]] std::optional<PlatformError> saveNow(const FilterConfiguration &configuration);

    const std::shared_ptr<SimulatedSystem> m_system;
    Scheduler &m_scheduler;
    FilterConfiguration m_copy;
    std::unique_ptr<SerialQueue> m_queue;
    Lifetime m_lifetime;
};

} // namespace zorvane::platform::simulated
