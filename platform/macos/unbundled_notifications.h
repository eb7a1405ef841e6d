#pragma once

#include "platform/main_thread.h"
#include "platform/user_notifications.h"

namespace zorvane::platform::macos
{

/**
 * For a program outside a bundle, a test for example: the notification center does not take such a
 * program and ends it. Nothing is allowed, nothing is shown.
 */
class UnbundledNotifications final : public UserNotifications
{
public:
    void setDelegate(std::weak_ptr<NotificationDelegate> delegate) override;
    void setCategories(const QList<NotificationCategory> &categories) override;
    void authorization(std::function<void(NotificationAuthorization)> done) override;
    void requestAuthorization(
        std::function<void(bool granted, const std::optional<PlatformError> &error)> done) override;
    void add(const NotificationRequest &request,
        std::function<void(const std::optional<PlatformError> &error)> done) override;
    void removePending(const QStringList &identifiers) override;
    void removeDelivered(const QStringList &identifiers) override;
    void whenNotNeeded(std::function<void()> done) override;

private:
    Lifetime m_lifetime;
};

} // namespace zorvane::platform::macos
