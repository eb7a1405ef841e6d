#include "platform/simulated/system_extensions.h"

#include "platform/main_thread.h"
#include "platform/simulated/extension_state.h"
#include "platform/simulated/simulated_system.h"

namespace zorvane::platform::simulated
{

namespace
{

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr auto approvalPollInterval = 250ms;

constexpr qint64 unknownError = 1;
constexpr qint64 requestCanceled = 11;
constexpr qint64 authorizationRequired = 13;

PlatformError extensionError(qint64 code, const QString &description)
{
    return {u"OSSystemExtensionErrorDomain"_s, code, description};
}

/** One request from its submission to its answer. Main thread. */
class Activation final : public ActivationRequest
{
public:
    Activation(std::shared_ptr<SimulatedSystem> system, Scheduler &scheduler, SerialQueue &queue,
        std::weak_ptr<ActivationDelegate> delegate)
        : m_system(std::move(system))
        , m_scheduler(scheduler)
        , m_queue(queue)
        , m_delegate(std::move(delegate))
    {
        after(m_system->behaviour().activationDelay, &Activation::begin);
    }

private:
    // Every function that calls the delegate does so last: it may destroy this.

    void after(std::chrono::milliseconds delay, void (Activation::*step)())
    {
        m_scheduler.after(delay, [this, step, alive = m_lifetime.watch()] {
            if (!alive.expired())
                (this->*step)();
        });
    }

    void begin()
    {
        const auto delegate = m_delegate.lock();
        if (!delegate)
            return;
        readState();
        if (const auto fault = m_system->takeFault(Operation::Activate))
            delegate->requestDidFail(*fault);
        else if (m_state.active
            && delegate->actionForReplacingExtension() == ReplacementAction::Cancel)
            delegate->requestDidFail(
                extensionError(requestCanceled, u"The extension was not replaced."_s));
        else
            decide();
    }

    void decide()
    {
        readState();
        const Behaviour behaviour = m_system->behaviour();
        if (behaviour.approval == Approval::Denied)
            fail(extensionError(
                authorizationRequired, u"The system did not allow the extension."_s));
        else if (behaviour.approval == Approval::Granted || m_state.approved)
            activate(behaviour.rebootNeeded);
        else
            waitForApproval();
    }

    void waitForApproval()
    {
        after(approvalPollInterval, &Activation::decide);
        if (std::exchange(m_isAwaitingApproval, true))
            return;
        if (const auto delegate = m_delegate.lock())
            delegate->requestNeedsUserApproval();
    }

    void activate(bool rebootNeeded)
    {
        const ExtensionState wanted{true, m_state.active || !rebootNeeded};
        const auto result = rebootNeeded ? ActivationResult::WillCompleteAfterReboot
                                         : ActivationResult::Completed;
        auto answer = onMainThread(m_scheduler, m_lifetime.watch(),
            [this, result](const std::optional<QString> &error) { finish(result, error); });
        m_queue.add([file = m_system->extensionFile(), wanted, answer] {
            answer(writeExtensionState(file, wanted));
        });
    }

    void finish(ActivationResult result, const std::optional<QString> &error)
    {
        if (error)
            fail(extensionError(
                unknownError, u"The extension could not be installed: %1."_s.arg(*error)));
        else if (const auto delegate = m_delegate.lock())
            delegate->requestDidFinish(result);
    }

    void fail(const PlatformError &error)
    {
        if (const auto delegate = m_delegate.lock())
            delegate->requestDidFail(error);
    }

    void readState()
    {
        const auto stamp = stampOf(m_system->extensionFile());
        if (stamp == m_stamp)
            return;
        m_stamp = stamp;
        m_state = readExtensionState(m_system->extensionFile());
    }

    const std::shared_ptr<SimulatedSystem> m_system;
    Scheduler &m_scheduler;
    SerialQueue &m_queue;
    std::weak_ptr<ActivationDelegate> m_delegate;
    std::optional<FileStamp> m_stamp;
    ExtensionState m_state;
    bool m_isAwaitingApproval = false;
    Lifetime m_lifetime;
};

} // namespace

SimulatedSystemExtensions::SimulatedSystemExtensions(
    std::shared_ptr<SimulatedSystem> system, Scheduler &scheduler)
    : m_system(std::move(system))
    , m_scheduler(scheduler)
    , m_queue(scheduler.makeSerialQueue("zorvane.extension"))
{
}

SimulatedSystemExtensions::~SimulatedSystemExtensions() = default;

std::unique_ptr<ActivationRequest> SimulatedSystemExtensions::submitActivation(
    const QString &, std::weak_ptr<ActivationDelegate> delegate)
{
    return std::make_unique<Activation>(m_system, m_scheduler, *m_queue, std::move(delegate));
}

} // namespace zorvane::platform::simulated
