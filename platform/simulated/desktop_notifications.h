#pragma once

#include "platform/simulated/notification_service.h"
#include "platform/simulated/posted_notifications.h"
#include "platform/simulated/session_bus.h"
#include "platform/user_notifications.h"

#include <chrono>
#include <filesystem>
#include <QHash>

namespace zorvane::platform::simulated
{

/**
 * Notifications by the desktop's service. They are allowed if there is one; nobody is asked.
 *
 * The service tells every program on the bus of a click. The program that posted the notification
 * answers it for as long as it is on the bus; after that, any other program of the product that
 * runs does. The one that takes the notification from the shared file answers, so it is answered
 * once.
 */
class DesktopNotifications final : public UserNotifications
{
public:
    /**
     * @p file is "notifications.json". Nothing is asked of the desktop before @p pause has passed,
     * unless it is needed to answer. The scheduler outlives this.
     */
    DesktopNotifications(std::shared_ptr<SessionBus> bus, std::filesystem::path file,
        Scheduler &scheduler, std::chrono::milliseconds pause = {});
    ~DesktopNotifications() override;

    void setDelegate(std::weak_ptr<NotificationDelegate> delegate) override;
    void setCategories(const QList<NotificationCategory> &categories) override;
    void authorization(std::function<void(NotificationAuthorization)> done) override;
    void requestAuthorization(
        std::function<void(bool, const std::optional<PlatformError> &)> done) override;
    void add(const NotificationRequest &request,
        std::function<void(const std::optional<PlatformError> &)> done) override;
    void removePending(const QStringList &identifiers) override;
    void removeDelivered(const QStringList &identifiers) override;
    void whenNotNeeded(std::function<void()> done) override;

private:
    using Shown = NotificationService::Shown;

    /** A request until the service shows it. */
    struct Pending {
        NotificationRequest request;
        /** Tells it from an earlier one of the same identifier. */
        quint64 generation = 0;
    };

    void connectToDesktop();
    void begin(const QDBusConnection &bus);
    /** Calls @p use, now or as soon as the program is connected to the desktop. */
    void withService(std::function<void(NotificationService &)> use);

    /** The request of that generation, if it is still wanted. */
    [[nodiscard]] const NotificationRequest *pending(
        const QString &identifier, quint64 generation) const;
    void takeBack(const QString &identifier);
    void show(const QString &identifier, quint64 generation);
    void notify(
        const QString &identifier, quint64 generation, const QStringList &serviceCapabilities);
    void shown(const QString &identifier, quint64 generation, const std::optional<Shown> &shown,
        bool canBeAnswered);
    [[nodiscard]] DesktopNotification rendered(
        const NotificationRequest &request, const QStringList &serviceCapabilities) const;
    [[nodiscard]] uint numberToReplace(const QString &identifier) const;

    void actionInvoked(uint number, const QString &key);
    void closed(uint number);
    void serviceChanged();
    /** The notification of that number, if it is this program's to answer for. */
    [[nodiscard]] std::optional<PostedNotification> ours(uint number) const;
    /** The notification made of that request, if this program has it on the screen. */
    [[nodiscard]] std::optional<PostedNotification> own(const QString &identifier) const;
    void respond(const PostedNotification &notification, const QString &key);
    void endIfNotNeeded();

    Scheduler &m_scheduler;
    const std::shared_ptr<SessionBus> m_bus;
    /** Null until the program is connected to the desktop. */
    std::unique_ptr<NotificationService> m_service;
    bool m_isConnecting = false;
    /** What is to be done then. */
    QList<std::function<void(NotificationService &)>> m_waiting;
    PostedNotifications m_posted;
    std::weak_ptr<NotificationDelegate> m_delegate;
    QList<NotificationCategory> m_categories;
    QHash<QString, Pending> m_pending;
    quint64 m_generation = 0;
    /** What this program has on the screen and may have to answer, by number. */
    QHash<uint, PostedNotification> m_own;
    int m_responsesUnderWay = 0;
    /** The latest token and the notification that it belongs to. */
    std::pair<uint, QString> m_activationToken;
    std::function<void()> m_notNeeded;
    Lifetime m_lifetime;
};

} // namespace zorvane::platform::simulated
