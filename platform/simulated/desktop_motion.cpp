#include "platform/simulated/desktop_motion.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QMap>
#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::platform::simulated
{

namespace
{

const auto service = u"org.freedesktop.portal.Desktop"_s;
const auto object = u"/org/freedesktop/portal/desktop"_s;
const auto interface = u"org.freedesktop.portal.Settings"_s;

const auto common = u"org.freedesktop.appearance"_s;
const auto gnome = u"org.gnome.desktop.interface"_s;
const auto kde = u"org.kde.kdeglobals.KDE"_s;

QString named(const QString &area, const QString &key)
{
    return area + u'/' + key;
}

/** KDE's factor is a text or a number; at nothing, animations take no time. */
bool isZero(const QVariant &factor)
{
    bool isNumber = false;
    return factor.toDouble(&isNumber) == 0 && isNumber;
}

} // namespace

DesktopMotion::DesktopMotion(std::shared_ptr<SessionBus> bus)
    : m_bus(std::move(bus))
{
    m_bus->whenConnected(
        m_lifetime.watch(), [this](const QDBusConnection &connection) { begin(connection); });
}

void DesktopMotion::begin(QDBusConnection bus)
{
    bus.connect(service, object, interface, u"SettingChanged"_s, this,
        SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(bus);
}

void DesktopMotion::ask(const QDBusConnection &bus)
{
    auto message = QDBusMessage::createMethodCall(service, object, interface, u"ReadAll"_s);
    message << QStringList{common, gnome, kde};
    message.setAutoStartService(false);
    auto *const watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](auto *answer) {
        answer->deleteLater();
        const QDBusMessage reply = answer->reply();
        // Whoever answers may answer anything.
        if (answer->isError() || reply.signature() != "a{sa{sv}}"_L1)
            return;
        const auto areas = qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst());
        for (auto area = areas.cbegin(); area != areas.cend(); ++area) {
            for (auto each = area->cbegin(); each != area->cend(); ++each)
                m_settings.insert(named(area.key(), each.key()), each.value());
        }
        settle();
    });
}

void DesktopMotion::settingChanged(
    const QString &area, const QString &key, const QDBusVariant &value)
{
    if (area != common && area != gnome && area != kde)
        return;
    m_settings.insert(named(area, key), value.variant());
    settle();
}

void DesktopMotion::settle()
{
    const auto animations = m_settings.value(named(gnome, u"enable-animations"_s));
    const bool isReduced = m_settings.value(named(common, u"reduced-motion"_s)).toUInt() == 1
        || (animations.typeId() == QMetaType::Bool && !animations.toBool())
        || isZero(m_settings.value(named(kde, u"AnimationDurationFactor"_s)));
    if (isReduced == m_isReduced)
        return;
    m_isReduced = isReduced;
    if (m_changed)
        m_changed();
}

} // namespace zorvane::platform::simulated
