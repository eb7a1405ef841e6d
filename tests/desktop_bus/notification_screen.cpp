#include "desktop_bus/notification_screen.h"

#include <QDBusConnectionInterface>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

constexpr uint dismissedByTheUser = 2;
constexpr uint closedByACall = 3;
const QString place = u"/org/freedesktop/Notifications"_s;

} // namespace

NotificationScreen::NotificationScreen(const PrivateBus &bus, uint firstNumber)
    : m_member(bus)
    , m_nextNumber(firstNumber)
{
    QDBusConnection connection = m_member.connection();
    if (!connection.registerObject(
            place, this, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals)
        || connection.interface()->registerService(u"org.freedesktop.Notifications"_s,
               QDBusConnectionInterface::ReplaceExistingService,
               QDBusConnectionInterface::AllowReplacement)
            != QDBusConnectionInterface::ServiceRegistered)
        qFatal("There is another notification service");
}

NotificationScreen::~NotificationScreen()
{
    m_member.connection().unregisterObject(place);
}

void NotificationScreen::click(uint number, const QString &key, const QString &token)
{
    if (!token.isEmpty())
        Q_EMIT ActivationToken(number, token);
    Q_EMIT ActionInvoked(number, key);
    dismiss(number);
}

void NotificationScreen::dismiss(uint number)
{
    shown.removeIf([number](const Notification &each) { return each.number == number; });
    Q_EMIT NotificationClosed(number, dismissedByTheUser);
}

uint NotificationScreen::Notify(const QString &program, uint replaces, const QString &icon,
    const QString &summary, const QString &body, const QStringList &actions,
    const QVariantMap &hints, int timeout)
{
    calls.append(u"notify %1"_s.arg(replaces));
    if (duringNotify)
        duringNotify();
    shown.removeIf([replaces](const Notification &each) { return each.number == replaces; });
    const uint number = replaces > 0 ? replaces : m_nextNumber++;
    shown.append({number, program, icon, summary, body, actions, hints, timeout});
    return number;
}

void NotificationScreen::CloseNotification(uint number)
{
    calls.append(u"close %1"_s.arg(number));
    const auto removed
        = shown.removeIf([number](const Notification &each) { return each.number == number; });
    if (removed > 0)
        Q_EMIT NotificationClosed(number, closedByACall);
}

} // namespace zorvane::tests
