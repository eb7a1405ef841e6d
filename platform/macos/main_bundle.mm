#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"

namespace zorvane::platform::macos
{

namespace
{

class FoundationMainBundle final : public MainBundle
{
public:
    [[nodiscard]] std::optional<QString> identifier() const override
    {
        @autoreleasepool {
            return textOf(NSBundle.mainBundle.bundleIdentifier);
        }
    }

    [[nodiscard]] std::filesystem::path location() const override
    {
        @autoreleasepool {
            return pathOf(NSBundle.mainBundle.bundleURL).value_or(std::filesystem::path());
        }
    }

    [[nodiscard]] std::optional<QString> shortVersion() const override
    {
        return text(@"CFBundleShortVersionString");
    }

    [[nodiscard]] std::optional<QString> buildVersion() const override
    {
        return text(@"CFBundleVersion");
    }

private:
    static std::optional<QString> text(NSString *key)
    {
        @autoreleasepool {
            return textOf([NSBundle.mainBundle objectForInfoDictionaryKey:key]);
        }
    }
};

} // namespace

std::unique_ptr<MainBundle> makeMainBundle()
{
    return std::make_unique<FoundationMainBundle>();
}

} // namespace zorvane::platform::macos
