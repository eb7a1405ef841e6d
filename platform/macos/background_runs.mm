#include "platform/background_runs.h"

#include "platform/macos/newer_system.h"

namespace zorvane::platform
{

namespace
{

/** A copy on a disk image or among the downloads is only on its way, and must not be remembered. */
bool isInstalled()
{
    return [NSBundle.mainBundle.bundlePath hasPrefix:@"/Applications/"];
}

} // namespace

void requestBackgroundRuns()
{
    @autoreleasepool {
        const Class<ZorvaneAgentServices> services = NSClassFromString(@"SMAppService");
        if (!isInstalled() || ![services respondsToSelector:@selector(agentServiceWithPlistName:)])
            return;
        const id<ZorvaneAgentService> service =
            [services agentServiceWithPlistName:@"dev.kestrelworks.Zorvane.update-agent.plist"];
        if (service.status != ZorvaneServiceStatusEnabled
            && service.status != ZorvaneServiceStatusRequiresApproval)
            [service registerAndReturnError:nil];
    }
}

} // namespace zorvane::platform
