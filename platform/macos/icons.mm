#include "platform/macos/adapters.h"
#include "platform/macos/bitmap.h"
#include "platform/macos/conversions.h"

#import <AppKit/AppKit.h>

namespace zorvane::platform::macos
{

namespace
{

class WorkspaceIcons final : public Icons
{
public:
    [[nodiscard]] QImage icon(const std::filesystem::path &path, int side) const override
    {
        @autoreleasepool {
            NSString *const name = urlOf(path).path;
            if (name == nil)
                return {};
            NSRect rectangle = NSMakeRect(0, 0, side, side);
            // Lives as long as the pool.
            CGImageRef picture =
                [[NSWorkspace.sharedWorkspace iconForFile:name] CGImageForProposedRect:&rectangle
                                                                               context:nil
                                                                                 hints:nil];
            if (picture == nullptr)
                return {};
            return paintedBitmap({side, side}, [picture, side](CGContextRef context) {
                CGContextDrawImage(context, CGRectMake(0, 0, side, side), picture);
            });
        }
    }
};

} // namespace

std::unique_ptr<Icons> makeIcons()
{
    return std::make_unique<WorkspaceIcons>();
}

} // namespace zorvane::platform::macos
