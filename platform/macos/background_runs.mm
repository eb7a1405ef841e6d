#include "platform/background_runs.h"

#include "platform/macos/newer_system.h"

namespace zorvane::platform
{

void requestBackgroundRuns()
{
    @autoreleasepool {
        const Class<ZorvaneAgentServices> services = NSClassFromString(@"SMAppService");
        if (![services respondsToSelector:@selector(agentServiceWithPlistName:)])
            return;
        const id<ZorvaneAgentService> service =
            [services agentServiceWithPlistName:@"dev.kestrelworks.Zorvane.update-agent.plist"];
        if (service.status != ZorvaneServiceStatusEnabled
            && service.status != ZorvaneServiceStatusRequiresApproval)
            [service registerAndReturnError:nil];
    }
}

} // namespace zorvane::platform
