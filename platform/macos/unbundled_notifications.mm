#include "platform/macos/unbundled_notifications.h"

#include "platform/macos/conversions.h"
#include "platform/macos/main_queue.h"

#import <UserNotifications/UserNotifications.h>

namespace zorvane::platform::macos
{

namespace
{

std::optional<PlatformError> notAllowed()
{
    @autoreleasepool {
        return errorOf([NSError errorWithDomain:UNErrorDomain
                                           code:UNErrorCodeNotificationsNotAllowed
                                       userInfo:nil]);
    }
}

} // namespace

void UnbundledNotifications::setDelegate(std::weak_ptr<NotificationDelegate>) { }

void UnbundledNotifications::setCategories(const QList<NotificationCategory> &) { }

void UnbundledNotifications::authorization(std::function<void(NotificationAuthorization)> done)
{
    onMainQueue(m_lifetime.watch(), [done] { done(NotificationAuthorization::Denied); });
}

void UnbundledNotifications::requestAuthorization(
    std::function<void(bool granted, const std::optional<PlatformError> &error)> done)
{
    onMainQueue(m_lifetime.watch(), [done] { done(false, notAllowed()); });
}

void UnbundledNotifications::add(const NotificationRequest &,
    std::function<void(const std::optional<PlatformError> &error)> done)
{
    onMainQueue(m_lifetime.watch(), [done] { done(notAllowed()); });
}

void UnbundledNotifications::removePending(const QStringList &) { }

void UnbundledNotifications::removeDelivered(const QStringList &) { }

void UnbundledNotifications::whenNotNeeded(std::function<void()> done)
{
    onMainQueue(m_lifetime.watch(), done);
}

} // namespace zorvane::platform::macos
