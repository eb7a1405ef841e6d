#pragma once

#include "desktop_bus/private_bus.h"

#include <functional>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace zorvane::tests
{

/**
 * A notification service, org.freedesktop.Notifications, that shows nothing and remembers all; a
 * test plays the user.
 */
class NotificationScreen final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    /** Takes the place of a service that is there already. The first number that it gives is @p
     * firstNumber. */
    explicit NotificationScreen(const PrivateBus &bus, uint firstNumber = 1);
    /** The bus's own thread lets go of it first. */
    ~NotificationScreen() override;

    struct Notification {
        uint number;
        QString program;
        QString icon;
        QString summary;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int timeout;
    };

    /** What is on the screen. */
    QList<Notification> shown;
    /** "notify 0", "close 1" and the like, in order. */
    QStringList calls;
    QStringList capabilities{QStringLiteral("actions"), QStringLiteral("body")};
    /** Called while a notification is being shown. */
    std::function<void()> duringNotify;

    /** Clicks an action, as the user does; the notification goes away. */
    void click(uint number, const QString &key, const QString &token = {});
    /** Closes a notification, as the user does. */
    void dismiss(uint number);

    // Named as on the bus.
public Q_SLOTS:
    QStringList GetCapabilities() { return capabilities; }
    uint Notify(const QString &program, uint replaces, const QString &icon, const QString &summary,
        const QString &body, const QStringList &actions, const QVariantMap &hints, int timeout);
    void CloseNotification(uint number);

Q_SIGNALS:
    void ActionInvoked(uint number, const QString &key);
    void NotificationClosed(uint number, uint reason);
    void ActivationToken(uint number, const QString &token);

private:
    BusMember m_member;
    uint m_nextNumber;
};

} // namespace zorvane::tests
