#pragma once

#include "platform/motion_preference.h"
#include "platform/simulated/session_bus.h"

#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>

namespace zorvane::platform::simulated
{

/**
 * Reads the wish from the desktop's settings portal, org.freedesktop.portal.Settings, as GNOME, KDE
 * and the desktops' common namespace tell it. The first answer comes some time after construction;
 * nothing is started to get one.
 */
class DesktopMotion final : public QObject, public MotionPreference
{
    Q_OBJECT

public:
    explicit DesktopMotion(std::shared_ptr<SessionBus> bus);

    [[nodiscard]] bool isReduced() const override { return m_isReduced; }
    void watch(std::function<void()> changed) override { m_changed = std::move(changed); }

private Q_SLOTS:
    void settingChanged(const QString &area, const QString &key, const QDBusVariant &value);

private:
    void begin(QDBusConnection bus);
    void ask(const QDBusConnection &bus);
    void settle();

    const std::shared_ptr<SessionBus> m_bus;
    /** By area, a slash and key. */
    QVariantMap m_settings;
    std::function<void()> m_changed;
    bool m_isReduced = false;
    Lifetime m_lifetime;
};

} // namespace zorvane::platform::simulated
