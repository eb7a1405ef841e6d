#pragma once

#include "platform/platform_error.h"

#include <memory>
#include <QString>

namespace zorvane::platform
{

/** What to do with an installed extension when the program brings its own. */
enum class ReplacementAction { Cancel, Replace };

/** How an activation ended. The system may add values, so an unknown one must be expected. */
enum class ActivationResult { Completed = 0, WillCompleteAfterReboot = 1 };

/** Hears how an activation request goes. Its functions are called on any thread. */
class ActivationDelegate
{
public:
    virtual ~ActivationDelegate() = default;

    /** Asked when another copy of the extension is installed; answered at once. */
    [[nodiscard]] virtual ReplacementAction actionForReplacingExtension() = 0;
    /** The user has to decide; finished or failed follows, maybe much later. */
    virtual void requestNeedsUserApproval() = 0;
    virtual void requestDidFinish(ActivationResult result) = 0;
    virtual void requestDidFail(const PlatformError &error) = 0;
};

/** A request that has been handed to the system; held for as long as it is outstanding. */
class ActivationRequest
{
public:
    virtual ~ActivationRequest() = default;
};

/** Activation of the program's system extensions. */
class SystemExtensions
{
public:
    virtual ~SystemExtensions() = default;

    /**
     * Asks the system to activate the extension @p identifier. Main thread. The delegate is held
     * weakly and hears nothing before this returns.
     */
    [[nodiscard]] virtual std::unique_ptr<ActivationRequest> submitActivation(
        const QString &identifier, std::weak_ptr<ActivationDelegate> delegate)
        = 0;
};

} // namespace zorvane::platform
