#include "desktop_bus/private_bus.h"
#include "platform/simulated/desktop_motion.h"
#include "platform/standard_scheduler.h"

#include <future>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMap>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using zorvane::platform::Lifetime;
using zorvane::platform::StandardScheduler;
using zorvane::platform::simulated::DesktopMotion;
using zorvane::platform::simulated::SessionBus;

using Areas = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(Areas)

namespace
{

const auto portalService = u"org.freedesktop.portal.Desktop"_s;
const auto portalObject = u"/org/freedesktop/portal/desktop"_s;
const auto portalInterface = u"org.freedesktop.portal.Settings"_s;

const auto common = u"org.freedesktop.appearance"_s;
const auto gnome = u"org.gnome.desktop.interface"_s;
const auto kde = u"org.kde.kdeglobals.KDE"_s;

} // namespace

/** A desktop's settings portal. */
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit Portal(const PrivateBus &bus)
        : m_member(bus)
    {
        auto connection = m_member.connection();
        connection.registerObject(portalObject, this,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        connection.registerService(portalService);
    }

    void change(const QString &area, const QString &key, const QVariant &value)
    {
        Q_EMIT SettingChanged(area, key, QDBusVariant(value));
    }

    Areas settings;
    int reads = 0;

    // Named as on the bus.
public Q_SLOTS:
    Areas ReadAll(const QStringList &)
    {
        ++reads;
        return settings;
    }

Q_SIGNALS:
    // NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): moc has other names
    void SettingChanged(const QString &area, const QString &key, const QDBusVariant &value);

private:
    BusMember m_member;
};

class TestDesktopMotion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qDBusRegisterMetaType<Areas>(); }

    void eachDesktopSaysItInItsOwnWay_data()
    {
        QTest::addColumn<QString>("area");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("reduced");
        QTest::newRow("GNOME, no animations")
            << gnome << u"enable-animations"_s << QVariant(false) << true;
        QTest::newRow("GNOME, animations")
            << gnome << u"enable-animations"_s << QVariant(true) << false;
        QTest::newRow("KDE, no animations")
            << kde << u"AnimationDurationFactor"_s << QVariant(u"0"_s) << true;
        QTest::newRow("KDE, no animations, as a number")
            << kde << u"AnimationDurationFactor"_s << QVariant(0.0) << true;
        QTest::newRow("KDE, fast animations")
            << kde << u"AnimationDurationFactor"_s << QVariant(u"0.5"_s) << false;
        QTest::newRow("KDE, something else")
            << kde << u"AnimationDurationFactor"_s << QVariant(u"none"_s) << false;
        QTest::newRow("any, reduced") << common << u"reduced-motion"_s << QVariant(1U) << true;
        QTest::newRow("any, no preference")
            << common << u"reduced-motion"_s << QVariant(0U) << false;
        QTest::newRow("another setting") << gnome << u"cursor-blink"_s << QVariant(false) << false;
        QTest::newRow("another area")
            << u"org.example"_s << u"enable-animations"_s << QVariant(false) << false;
    }

    void eachDesktopSaysItInItsOwnWay()
    {
        QFETCH(QString, area);
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        QFETCH(bool, reduced);
        Portal portal(m_bus);
        portal.settings[area][key] = value;
        const BusMember member(m_bus);
        DesktopMotion motion(busOf(member));
        QVERIFY(!motion.isReduced());
        int changes = 0;
        motion.watch([&] { ++changes; });
        QTRY_COMPARE(portal.reads, 1);
        settle(portal, member);
        QCOMPARE(motion.isReduced(), reduced);
        QCOMPARE(changes, reduced ? 1 : 0);
    }

    void aChangeIsFollowed()
    {
        Portal portal(m_bus);
        const BusMember member(m_bus);
        DesktopMotion motion(busOf(member));
        QList<bool> heard;
        motion.watch([&] { heard << motion.isReduced(); });
        QTRY_COMPARE(portal.reads, 1);
        portal.change(gnome, u"enable-animations"_s, false);
        QTRY_COMPARE(heard, QList<bool>{true});
        portal.change(gnome, u"enable-animations"_s, false);
        portal.change(gnome, u"enable-animations"_s, true);
        QTRY_COMPARE(heard, (QList<bool>{true, false}));
    }

    void withoutAPortalNothingIsReduced()
    {
        const BusMember member(m_bus);
        const auto bus = busOf(member);
        const DesktopMotion motion(bus);
        const DesktopMotion withoutBus(
            std::make_shared<SessionBus>(m_scheduler, [] { return QDBusConnection(u"none"_s); }));
        // Connected after the first, so that the portal comes when that has asked.
        const Lifetime listening;
        bool connected = false;
        bus->whenConnected(listening.watch(), [&](const auto &) { connected = true; });
        QTRY_VERIFY(connected);
        Portal portal(m_bus);
        settle(portal, member);
        QVERIFY(!motion.isReduced());
        QCOMPARE(portal.reads, 0);
        QVERIFY(!withoutBus.isReduced());
    }

    void nobodyWaitsForTheBus()
    {
        Portal portal(m_bus);
        portal.settings[gnome][u"enable-animations"_s] = false;
        const BusMember member(m_bus);
        std::promise<void> started;
        const auto bus = std::make_shared<SessionBus>(m_scheduler, [&] {
            started.get_future().wait();
            return member.connection();
        });
        const DesktopMotion motion(bus);
        QVERIFY(!motion.isReduced());
        started.set_value();
        QTRY_VERIFY(motion.isReduced());
    }

    void aBusThatComesTooLateFindsNobody()
    {
        const BusMember member(m_bus);
        std::promise<void> started;
        auto motion
            = std::make_unique<DesktopMotion>(std::make_shared<SessionBus>(m_scheduler, [&] {
                  started.get_future().wait();
                  return member.connection();
              }));
        started.set_value();
        motion.reset();
        QCoreApplication::processEvents();
    }

    void noteChange(const QString &area, const QString &, const QDBusVariant &) { m_heard = area; }

private:
    std::shared_ptr<SessionBus> busOf(const BusMember &member)
    {
        return std::make_shared<SessionBus>(m_scheduler, [&member] { return member.connection(); });
    }

    /** Waits until a program on this connection has heard all that the portal has said so far. */
    void settle(Portal &portal, const BusMember &member)
    {
        member.connection().connect(portalService, portalObject, portalInterface,
            u"SettingChanged"_s, this, SLOT(noteChange(QString, QString, QDBusVariant)));
        m_heard.clear();
        portal.change(u"org.example"_s, u"end"_s, 1);
        QTRY_COMPARE(m_heard, u"org.example"_s);
    }

    PrivateBus m_bus;
    StandardScheduler m_scheduler;
    QString m_heard;
};

QTEST_GUILESS_MAIN(TestDesktopMotion)
#include "tst_desktop_motion.moc"
