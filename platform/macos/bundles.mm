#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"

namespace zorvane::platform::macos
{

namespace
{

class OpenBundle final : public Bundle
{
public:
    explicit OpenBundle(NSBundle *bundle)
        : m_bundle(bundle)
    {
    }

    [[nodiscard]] std::optional<QString> identifier() const override
    {
        @autoreleasepool {
            return textOf(m_bundle.bundleIdentifier);
        }
    }

    [[nodiscard]] QVariant informationValue(const QString &key) const override
    {
        @autoreleasepool {
            return variantOf([m_bundle objectForInfoDictionaryKey:key.toNSString()]);
        }
    }

private:
    NSBundle *const m_bundle;
};

class FoundationBundles final : public Bundles
{
public:
    [[nodiscard]] std::unique_ptr<Bundle> open(const std::filesystem::path &path) const override
    {
        @autoreleasepool {
            NSURL *const url = urlOf(path);
            if (url == nil)
                return nullptr;
            NSBundle *const bundle = [NSBundle bundleWithURL:url];
            if (bundle == nil)
                return nullptr;
            return std::make_unique<OpenBundle>(bundle);
        }
    }
};

} // namespace

std::unique_ptr<Bundles> makeBundles()
{
    return std::make_unique<FoundationBundles>();
}

} // namespace zorvane::platform::macos
