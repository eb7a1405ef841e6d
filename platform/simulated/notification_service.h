#pragma once

#include <functional>
#include <optional>
#include <QDBusAbstractInterface>
#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QStringList>
#include <QVariantMap>

namespace zorvane::platform::simulated
{

/** Which notification service: a number that it gave means nothing to another one. */
struct NotificationServiceIdentity {
    /** The bus, unlike all others. */
    QString bus;
    /** The service's unique name on that bus; empty if no service runs. */
    QString service;

    friend bool operator==(const NotificationServiceIdentity &, const NotificationServiceIdentity &)
        = default;
};

/** What the service is asked to show. */
struct DesktopNotification {
    /** The number of the notification to replace; 0 for none. */
    uint replaces = 0;
    QString summary;
    QString body;
    /** Keys and titles in turn. */
    QStringList actions;
    QVariantMap hints;
};

/**
 * The desktop's notification service, org.freedesktop.Notifications, as the Desktop Notifications
 * Specification 1.2 describes it. Main thread. Answers come later, and not at all once this is
 * gone.
 */
class NotificationService final : public QDBusAbstractInterface
{
    Q_OBJECT

public:
    explicit NotificationService(const QDBusConnection &bus);
    ~NotificationService() override;

    /** What the service can do, "actions" and the like; nothing if there is no service. */
    void capabilities(std::function<void(const std::optional<QStringList> &)> done);

    /** The service that answered, and the number under which it shows the notification. */
    struct Shown {
        uint number = 0;
        NotificationServiceIdentity by;
    };
    /** Shows a notification; nothing if that failed. */
    void notify(const DesktopNotification &notification,
        std::function<void(const std::optional<Shown> &)> done);
    void close(uint number);

    /** The service that runs now. */
    [[nodiscard]] NotificationServiceIdentity identity() const;
    /** This program's own name on the bus. */
    [[nodiscard]] QString ownName() const;
    /** True if the program of that name still runs. */
    [[nodiscard]] bool isPresent(const QString &name) const;

    // Named as on the bus.
Q_SIGNALS:
    void ActionInvoked(uint number, const QString &key);
    void NotificationClosed(uint number, uint reason);
    /** Comes before ActionInvoked where the desktop lets a window come to the front for it. */
    void ActivationToken(uint number, const QString &token);

    /** The service has left the bus, has come, or has given its place to another one. */
    void changed();

private:
    const QString m_busId;
};

} // namespace zorvane::platform::simulated
