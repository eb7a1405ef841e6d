#include "platform/macos/adapters.h"

#import <AppKit/AppKit.h>

namespace zorvane::platform::macos
{

namespace
{

bool isMotionReduced()
{
    @autoreleasepool {
        return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
    }
}

class WorkspaceMotion final : public MotionPreference
{
public:
    WorkspaceMotion() = default;
    ~WorkspaceMotion() override { stop(); }
    WorkspaceMotion(const WorkspaceMotion &) = delete;
    WorkspaceMotion &operator=(const WorkspaceMotion &) = delete;

    [[nodiscard]] bool isReduced() const override { return isMotionReduced(); }

    void watch(std::function<void()> changed) override
    {
        stop();
        __block bool known = isMotionReduced();
        @autoreleasepool {
            m_observer = [NSWorkspace.sharedWorkspace.notificationCenter
                addObserverForName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                            object:nil
                             queue:NSOperationQueue.mainQueue
                        usingBlock:^(NSNotification *) {
                            // The notification speaks of the other display options as well.
                            if (isMotionReduced() == known)
                                return;
                            known = !known;
                            changed();
                        }];
        }
    }

private:
    void stop()
    {
        @autoreleasepool {
            if (m_observer != nil)
                [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:m_observer];
            m_observer = nil;
        }
    }

    id<NSObject> m_observer = nil;
};

} // namespace

std::unique_ptr<MotionPreference> makeMotionPreference()
{
    return std::make_unique<WorkspaceMotion>();
}

} // namespace zorvane::platform::macos
