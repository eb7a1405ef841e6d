#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"
#include "platform/macos/main_queue.h"
#include "platform/macos/unbundled_notifications.h"
#include "platform/main_thread.h"

#import <UserNotifications/UserNotifications.h>

using zorvane::platform::NotificationDelegate;

/** Passes the user's responses on. It has no say in what is shown while the program is in front. */
@interface ZorvaneResponseObserver : NSObject <UNUserNotificationCenterDelegate>
- (void)setReceiver:(std::weak_ptr<NotificationDelegate>)receiver;
@end

@implementation ZorvaneResponseObserver {
    std::weak_ptr<NotificationDelegate> _receiver;
}

- (void)setReceiver:(std::weak_ptr<NotificationDelegate>)receiver
{
    @synchronized(self) {
        _receiver = std::move(receiver);
    }
}

- (std::shared_ptr<NotificationDelegate>)receiver
{
    @synchronized(self) {
        return _receiver.lock();
    }
}

- (void)userNotificationCenter:(UNUserNotificationCenter *)__unused center
    didReceiveNotificationResponse:(UNNotificationResponse *)response
             withCompletionHandler:(void (^)(void))completionHandler
{
    const auto receiver = [self receiver];
    if (!receiver) {
        completionHandler();
        return;
    }
    NSString *const action = response.actionIdentifier;
    UNNotificationContent *const content = response.notification.request.content;
    const bool isClick = [action isEqualToString:UNNotificationDefaultActionIdentifier];
    receiver->didReceive(
        {
            .actionIdentifier = isClick ? QString() : QString::fromNSString(action),
            .categoryIdentifier = QString::fromNSString(content.categoryIdentifier),
            .userInfo = zorvane::platform::macos::mapOf(content.userInfo),
        },
        [completionHandler] { completionHandler(); });
}

@end

namespace zorvane::platform::macos
{

namespace
{

static_assert(static_cast<long>(NotificationAuthorization::NotDetermined)
    == UNAuthorizationStatusNotDetermined);
static_assert(static_cast<long>(NotificationAuthorization::Denied) == UNAuthorizationStatusDenied);
static_assert(
    static_cast<long>(NotificationAuthorization::Authorized) == UNAuthorizationStatusAuthorized);
static_assert(
    static_cast<long>(NotificationAuthorization::Provisional) == UNAuthorizationStatusProvisional);
static_assert(UNNotificationActionOptionForeground == 1 << 2);

UNNotificationCategory *categoryOf(const NotificationCategory &category)
{
    NSMutableArray<UNNotificationAction *> *const actions = [NSMutableArray array];
    for (const NotificationAction &action : category.actions) {
        const auto options = action.foreground ? UNNotificationActionOptionForeground
                                               : UNNotificationActionOptionNone;
        [actions addObject:[UNNotificationAction actionWithIdentifier:action.identifier.toNSString()
                                                                title:action.title.toNSString()
                                                              options:options]];
    }
    return [UNNotificationCategory categoryWithIdentifier:category.identifier.toNSString()
                                                  actions:actions
                                        intentIdentifiers:@[]
                                                  options:UNNotificationCategoryOptionNone];
}

UNNotificationContent *contentOf(const NotificationRequest &request)
{
    UNMutableNotificationContent *const content = [[UNMutableNotificationContent alloc] init];
    content.title = request.title.toNSString();
    content.body = request.body.toNSString();
    if (request.hasDefaultSound)
        content.sound = UNNotificationSound.defaultSound;
    content.categoryIdentifier = request.categoryIdentifier.toNSString();
    content.userInfo = dictionaryOf(request.userInfo);
    return content;
}

/** None shows it at once; the system raises an exception at a trigger of no time. */
UNNotificationTrigger *triggerOf(const NotificationRequest &request)
{
    if (request.delay <= std::chrono::seconds(0))
        return nil;
    return [UNTimeIntervalNotificationTrigger
        triggerWithTimeInterval:std::chrono::duration<double>(request.delay).count()
                        repeats:NO];
}

class CenterNotifications final : public UserNotifications
{
public:
    CenterNotifications()
    {
        m_center.delegate = m_observer; // held weakly there
    }

    void setDelegate(std::weak_ptr<NotificationDelegate> delegate) override
    {
        @autoreleasepool {
            [m_observer setReceiver:std::move(delegate)];
        }
    }

    void setCategories(const QList<NotificationCategory> &categories) override
    {
        @autoreleasepool {
            NSMutableSet<UNNotificationCategory *> *const set = [NSMutableSet set];
            for (const NotificationCategory &category : categories)
                [set addObject:categoryOf(category)];
            [m_center setNotificationCategories:set];
        }
    }

    void authorization(std::function<void(NotificationAuthorization)> done) override
    {
        @autoreleasepool {
            const std::weak_ptr<const void> owner = m_lifetime.watch();
            [m_center
                getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings *settings) {
                    const auto state
                        = static_cast<NotificationAuthorization>(settings.authorizationStatus);
                    onMainQueue(owner, [done, state] { done(state); });
                }];
        }
    }

    void requestAuthorization(
        std::function<void(bool granted, const std::optional<PlatformError> &error)> done) override
    {
        @autoreleasepool {
            const std::weak_ptr<const void> owner = m_lifetime.watch();
            const auto options = UNAuthorizationOptionAlert | UNAuthorizationOptionSound;
            [m_center
                requestAuthorizationWithOptions:options
                              completionHandler:^(BOOL granted, NSError *error) {
                                  onMainQueue(owner, [done, granted, failure = errorOf(error)] {
                                      done(granted, failure);
                                  });
                              }];
        }
    }

    void add(const NotificationRequest &request,
        std::function<void(const std::optional<PlatformError> &error)> done) override
    {
        @autoreleasepool {
            const std::weak_ptr<const void> owner = m_lifetime.watch();
            UNNotificationRequest *const made =
                [UNNotificationRequest requestWithIdentifier:request.identifier.toNSString()
                                                     content:contentOf(request)
                                                     trigger:triggerOf(request)];
            [m_center addNotificationRequest:made
                       withCompletionHandler:^(NSError *error) {
                           onMainQueue(owner, [done, failure = errorOf(error)] { done(failure); });
                       }];
        }
    }

    void removePending(const QStringList &identifiers) override
    {
        @autoreleasepool {
            [m_center removePendingNotificationRequestsWithIdentifiers:arrayOf(identifiers)];
        }
    }

    void removeDelivered(const QStringList &identifiers) override
    {
        @autoreleasepool {
            [m_center removeDeliveredNotificationsWithIdentifiers:arrayOf(identifiers)];
        }
    }

    void whenNotNeeded(std::function<void()> done) override
    {
        onMainQueue(m_lifetime.watch(), done);
    }

private:
    UNUserNotificationCenter *const m_center = UNUserNotificationCenter.currentNotificationCenter;
    ZorvaneResponseObserver *const m_observer = [[ZorvaneResponseObserver alloc] init];
    Lifetime m_lifetime;
};

} // namespace

std::unique_ptr<UserNotifications> makeUserNotifications()
{
    @autoreleasepool {
        if (NSBundle.mainBundle.bundleIdentifier == nil)
            return std::make_unique<UnbundledNotifications>();
        return std::make_unique<CenterNotifications>();
    }
}

} // namespace zorvane::platform::macos
