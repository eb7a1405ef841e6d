#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"

#import <Security/Security.h>

namespace zorvane::platform::macos
{

namespace
{

/** Nothing unless @p value is a list of texts only. */
std::optional<QStringList> textsOf(id value)
{
    if (![value isKindOfClass:NSArray.class])
        return std::nullopt;
    QStringList texts;
    for (id item in static_cast<NSArray *>(value)) {
        const auto text = textOf(item);
        if (!text)
            return std::nullopt;
        texts.append(*text);
    }
    return texts;
}

class TaskEntitlements final : public Entitlements
{
public:
    [[nodiscard]] std::optional<QStringList> applicationGroups() const override
    {
        @autoreleasepool {
            const CoreFoundationPointer<SecTaskRef> task(
                SecTaskCreateFromSelf(kCFAllocatorDefault));
            if (!task)
                return std::nullopt;
            return textsOf(CFBridgingRelease(SecTaskCopyValueForEntitlement(
                task.get(), CFSTR("com.apple.security.application-groups"), nullptr)));
        }
    }
};

} // namespace

std::unique_ptr<Entitlements> makeEntitlements()
{
    return std::make_unique<TaskEntitlements>();
}

} // namespace zorvane::platform::macos
