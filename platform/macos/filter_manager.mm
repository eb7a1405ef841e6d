#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"
#include "platform/macos/main_queue.h"
#include "platform/main_thread.h"

#import <NetworkExtension/NetworkExtension.h>

namespace zorvane::platform::macos
{

namespace
{

// Told apart by number where the filter's errors are classified.
static_assert(NEFilterManagerErrorConfigurationPermissionDenied == 5);

NSDictionary<NSString *, id> *vendorDictionary(const std::map<QString, QStringList> &values)
{
    NSMutableDictionary<NSString *, id> *const dictionary = [NSMutableDictionary dictionary];
    for (const auto &[key, texts] : values)
        dictionary[key.toNSString()] = arrayOf(texts);
    return dictionary;
}

class NetworkFilterManager final : public FilterManager
{
public:
    void load(Completion done) override
    {
        @autoreleasepool {
            [m_manager loadFromPreferencesWithCompletionHandler:answer(std::move(done))];
        }
    }

    void save(Completion done) override
    {
        @autoreleasepool {
            [m_manager saveToPreferencesWithCompletionHandler:answer(std::move(done))];
        }
    }

    [[nodiscard]] bool isEnabled() const override
    {
        @autoreleasepool {
            return m_manager.enabled;
        }
    }

    void setEnabled(bool enabled) override
    {
        @autoreleasepool {
            m_manager.enabled = enabled;
        }
    }

    void setProviderConfiguration(const FilterProviderConfiguration &configuration) override
    {
        @autoreleasepool {
            NEFilterProviderConfiguration *provider = m_manager.providerConfiguration;
            if (provider == nil)
                provider = [[NEFilterProviderConfiguration alloc] init];
            provider.filterSockets = configuration.filterSockets;
            provider.filterDataProviderBundleIdentifier
                = configuration.filterDataProviderBundleIdentifier.toNSString();
            provider.vendorConfiguration = vendorDictionary(configuration.vendorConfiguration);
            m_manager.providerConfiguration = provider;
        }
    }

    void setLocalizedDescription(const QString &description) override
    {
        @autoreleasepool {
            m_manager.localizedDescription = description.toNSString();
        }
    }

private:
    using Handler = void (^)(NSError *);

    // A block would keep a reference as one.
    // NOLINTNEXTLINE(performance-unnecessary-value-param)
    [[nodiscard]] Handler answer(Completion done) const
    {
        const std::weak_ptr<const void> owner = m_lifetime.watch();
        return ^(NSError *error) {
            onMainQueue(owner, [done, failure = errorOf(error)] { done(failure); });
        };
    }

    NEFilterManager *const m_manager = NEFilterManager.sharedManager;
    Lifetime m_lifetime;
};

} // namespace

std::unique_ptr<FilterManager> makeFilterManager()
{
    @autoreleasepool {
        return std::make_unique<NetworkFilterManager>();
    }
}

} // namespace zorvane::platform::macos
