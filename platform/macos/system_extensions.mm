#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"

#import <SystemExtensions/SystemExtensions.h>

using zorvane::platform::ActivationDelegate;
using zorvane::platform::ActivationResult;
using zorvane::platform::ReplacementAction;

/** Passes on what the system says of a request. */
@interface ZorvaneActivationObserver : NSObject <OSSystemExtensionRequestDelegate>
- (instancetype)initWithDelegate:(std::weak_ptr<ActivationDelegate>)delegate;
@end

@implementation ZorvaneActivationObserver {
    std::weak_ptr<ActivationDelegate> _delegate;
}

- (instancetype)initWithDelegate:(std::weak_ptr<ActivationDelegate>)delegate
{
    self = [super init];
    if (self != nil)
        _delegate = std::move(delegate);
    return self;
}

- (OSSystemExtensionReplacementAction)request:(OSSystemExtensionRequest *)__unused request
                  actionForReplacingExtension:(OSSystemExtensionProperties *)__unused existing
                                withExtension:(OSSystemExtensionProperties *)__unused extension
{
    const auto delegate = _delegate.lock();
    // Whoever submitted may be gone: the program's own extension is still the one that is wanted.
    return delegate && delegate->actionForReplacingExtension() == ReplacementAction::Cancel
        ? OSSystemExtensionReplacementActionCancel
        : OSSystemExtensionReplacementActionReplace;
}

- (void)requestNeedsUserApproval:(OSSystemExtensionRequest *)__unused request
{
    if (const auto delegate = _delegate.lock())
        delegate->requestNeedsUserApproval();
}

- (void)request:(OSSystemExtensionRequest *)__unused request
    didFinishWithResult:(OSSystemExtensionRequestResult)result
{
    if (const auto delegate = _delegate.lock())
        delegate->requestDidFinish(static_cast<ActivationResult>(result));
}

- (void)request:(OSSystemExtensionRequest *)__unused request didFailWithError:(NSError *)error
{
    const auto delegate = _delegate.lock();
    if (const auto failure = zorvane::platform::macos::errorOf(error); delegate && failure)
        delegate->requestDidFail(*failure);
}

@end

namespace zorvane::platform::macos
{

namespace
{

static_assert(static_cast<long>(ActivationResult::Completed)
    == static_cast<long>(OSSystemExtensionRequestCompleted));
static_assert(static_cast<long>(ActivationResult::WillCompleteAfterReboot)
    == static_cast<long>(OSSystemExtensionRequestWillCompleteAfterReboot));

// Told apart by number where the filter's errors are classified.
static_assert(OSSystemExtensionErrorAuthorizationRequired == 13);

class SubmittedRequest final : public ActivationRequest
{
public:
    SubmittedRequest(OSSystemExtensionRequest *request, ZorvaneActivationObserver *observer)
        : m_request(request)
        , m_observer(observer)
    {
        m_request.delegate = m_observer; // held weakly there
    }

private:
    OSSystemExtensionRequest *const m_request;
    ZorvaneActivationObserver *const m_observer;
};

class SystemExtensionRequests final : public SystemExtensions
{
public:
    [[nodiscard]] std::unique_ptr<ActivationRequest> submitActivation(
        const QString &identifier, std::weak_ptr<ActivationDelegate> delegate) override
    {
        @autoreleasepool {
            OSSystemExtensionRequest *const request =
                [OSSystemExtensionRequest activationRequestForExtension:identifier.toNSString()
                                                                  queue:dispatch_get_main_queue()];
            auto submitted = std::make_unique<SubmittedRequest>(
                request, [[ZorvaneActivationObserver alloc] initWithDelegate:std::move(delegate)]);
            [OSSystemExtensionManager.sharedManager submitRequest:request];
            return submitted;
        }
    }
};

} // namespace

std::unique_ptr<SystemExtensions> makeSystemExtensions()
{
    return std::make_unique<SystemExtensionRequests>();
}

} // namespace zorvane::platform::macos
