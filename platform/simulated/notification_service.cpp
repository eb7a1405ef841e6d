#include "platform/simulated/notification_service.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDBusServiceWatcher>

using namespace Qt::StringLiterals;

namespace zorvane::platform::simulated
{

namespace
{

const char interfaceName[] = "org.freedesktop.Notifications";
const QString serviceName = u"org.freedesktop.Notifications"_s;
const QString objectPath = u"/org/freedesktop/Notifications"_s;

const QString programName = u"Zorvane"_s;
const QString programIcon = u"dev.kestrelworks.Zorvane"_s;
constexpr int serviceDecidesHowLong = -1;

/** No two buses have the same. */
QString idOf(const QDBusConnection &bus)
{
    if (!bus.isConnected())
        return {};
    const QDBusReply<QString> id = bus.call(QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/"_s, u"org.freedesktop.DBus"_s, u"GetId"_s));
    return id.value();
}

/** Without a bus Qt would leave a call without any answer. */
QDBusPendingCall noBus()
{
    return QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, u"no bus"_s));
}

} // namespace

NotificationService::NotificationService(const QDBusConnection &bus)
    : QDBusAbstractInterface(serviceName, objectPath, interfaceName, bus, nullptr)
    , m_busId(idOf(bus))
{
    auto *const watcher
        = new QDBusServiceWatcher(serviceName, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(
        watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &NotificationService::changed);
}

NotificationService::~NotificationService() = default;

void NotificationService::capabilities(std::function<void(const std::optional<QStringList> &)> done)
{
    auto *const watcher = new QDBusPendingCallWatcher(
        connection().isConnected() ? asyncCall(u"GetCapabilities"_s) : noBus(), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        const QDBusPendingReply<QStringList> reply = *watcher;
        done(reply.isError() ? std::nullopt : std::optional(reply.value()));
    });
}

void NotificationService::notify(
    const DesktopNotification &notification, std::function<void(const std::optional<Shown> &)> done)
{
    const QDBusPendingCall call = connection().isConnected()
        ? asyncCall(u"Notify"_s, programName, notification.replaces, programIcon,
            notification.summary, notification.body, notification.actions, notification.hints,
            serviceDecidesHowLong)
        : noBus();
    auto *const watcher = new QDBusPendingCallWatcher(call, this);
    connect(
        watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, done = std::move(done)] {
            watcher->deleteLater();
            const QDBusPendingReply<uint> reply = *watcher;
            if (reply.isError())
                done(std::nullopt);
            else
                done(Shown{reply.value(), {m_busId, reply.reply().service()}});
        });
}

void NotificationService::close(uint number)
{
    asyncCall(u"CloseNotification"_s, number);
}

NotificationServiceIdentity NotificationService::identity() const
{
    if (!connection().isConnected())
        return {};
    return {m_busId, connection().interface()->serviceOwner(serviceName).value()};
}

QString NotificationService::ownName() const
{
    return connection().baseService();
}

bool NotificationService::isPresent(const QString &name) const
{
    return connection().isConnected() && connection().interface()->isServiceRegistered(name);
}

} // namespace zorvane::platform::simulated
