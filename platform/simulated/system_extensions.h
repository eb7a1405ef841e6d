#pragma once

#include "platform/system_extensions.h"

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
 * Activation as "system.json" and "extension.json" have it: granted, asked for, or denied. Asked
 * for, a request waits until the extension is allowed in the settings program. Delegates are called
 * on the main thread; a request that is destroyed calls nobody any more.
 */
class SimulatedSystemExtensions final : public SystemExtensions
{
public:
    /** The scheduler outlives this, and this outlives its requests. */
    SimulatedSystemExtensions(std::shared_ptr<SimulatedSystem> system, Scheduler &scheduler);
    ~SimulatedSystemExtensions() override;

    [[nodiscard]] std::unique_ptr<ActivationRequest> submitActivation(
        const QString &identifier, std::weak_ptr<ActivationDelegate> delegate) override;

private:
    const std::shared_ptr<SimulatedSystem> m_system;
    Scheduler &m_scheduler;
    std::unique_ptr<SerialQueue> m_queue;
};

} // namespace zorvane::platform::simulated
