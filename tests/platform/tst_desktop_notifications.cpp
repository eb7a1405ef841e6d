// What comes to the screen, and what goes from it.

#include "notification_fixture.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;
using simulated::DesktopNotifications;
using simulated::SessionBus;

class TestDesktopNotifications : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_f.restart(); }

    void aServiceIsAnAuthorization_data()
    {
        QTest::addColumn<bool>("running");
        QTest::newRow("a service") << true;
        QTest::newRow("none") << false;
    }

    void aServiceIsAnAuthorization()
    {
        QFETCH(bool, running);
        if (!running)
            m_f.screen.reset();
        std::optional<NotificationAuthorization> state;
        std::optional<bool> granted;
        m_f.agent->notifications->authorization([&](auto answer) { state = answer; });
        m_f.agent->notifications->requestAuthorization([&](bool answer, const auto &error) {
            granted = answer;
            QVERIFY(!error);
        });
        QVERIFY(!state);
        QTRY_VERIFY(state && granted);
        QCOMPARE(*state,
            running ? NotificationAuthorization::Authorized : NotificationAuthorization::Denied);
        QCOMPARE(*granted, running);
    }

    void withoutABusNothingIsAuthorizedOrNeeded()
    {
        FakeScheduler scheduler;
        DesktopNotifications notifications(
            std::make_shared<SessionBus>(scheduler, [] { return QDBusConnection(u"none"_s); }),
            m_f.folder->path() / notificationsFile.toStdString(), scheduler);
        std::optional<NotificationAuthorization> state;
        bool notNeeded = false;
        notifications.authorization([&](auto answer) { state = answer; });
        notifications.removeDelivered({notificationIdentifier});
        notifications.whenNotNeeded([&] { notNeeded = true; });
        scheduler.settle();
        QVERIFY(notNeeded);
        QTRY_COMPARE(state, NotificationAuthorization::Denied);
    }

    void nothingIsAskedOfTheDesktopAtOnce()
    {
        int connections = 0;
        FakeScheduler scheduler;
        const BusMember member(m_f.bus);
        const auto bus = std::make_shared<SessionBus>(scheduler, [&] {
            ++connections;
            return member.connection();
        });
        const auto path = m_f.folder->path() / notificationsFile.toStdString();
        DesktopNotifications unhurried(bus, path, scheduler, 500ms);
        scheduler.advance(499ms);
        scheduler.settle();
        QCOMPARE(connections, 0);
        scheduler.advance(1ms);
        scheduler.settle();
        QCOMPARE(connections, 1);

        DesktopNotifications asked(bus, path, scheduler, 500ms);
        std::optional<NotificationAuthorization> state;
        asked.authorization([&](auto answer) { state = answer; });
        scheduler.settle();
        QCOMPARE(connections, 2);
        QTRY_COMPARE(state, NotificationAuthorization::Authorized);
        scheduler.advance(500ms);
        scheduler.settle();
        QCOMPARE(connections, 2);
    }

    void isNeededWhileItHasToTakeSomethingBack()
    {
        m_f.post(sampleRequest());
        FakeScheduler scheduler;
        const BusMember member(m_f.bus);
        DesktopNotifications next(
            std::make_shared<SessionBus>(scheduler, [&] { return member.connection(); }),
            m_f.folder->path() / notificationsFile.toStdString(), scheduler, 500ms);
        bool notNeeded = false;
        next.removeDelivered({notificationIdentifier});
        next.whenNotNeeded([&] { notNeeded = true; });
        scheduler.runPosted();
        QVERIFY(!notNeeded);
        scheduler.settle();
        QVERIFY(notNeeded);
        QTRY_VERIFY(m_f.screen->shown.isEmpty());
    }

    void showsARequestAfterItsDelay()
    {
        m_f.agent->add(sampleRequest());
        QVERIFY(!m_f.agent->accepted);
        m_f.agent->pass(4s);
        QVERIFY(m_f.agent->accepted);
        QVERIFY(m_f.screen->calls.isEmpty());
        m_f.agent->pass(1s);
        QTRY_COMPARE(m_f.screen->shown.size(), 1);
        const auto &shown = m_f.screen->shown.constFirst();
        QCOMPARE(shown.program, u"Zorvane"_s);
        QCOMPARE(shown.summary, u"Zorvane 2.1 is available"_s);
        QCOMPARE(shown.body, u"Faster & <b>better</b>."_s);
        QCOMPARE(shown.actions,
            QStringList({u"default"_s, u"Zorvane 2.1 is available"_s, u"DOWNLOAD_UPDATE"_s,
                u"Download Update"_s}));
        QCOMPARE(shown.hints.value(u"sound-name"_s).toString(), u"message-new-instant"_s);
        QCOMPARE(shown.hints.value(u"desktop-entry"_s).toString(), u"dev.kestrelworks.Zorvane"_s);
    }

    void givesAServiceWhatItCanDo()
    {
        m_f.screen->capabilities = {u"body"_s, u"body-markup"_s};
        NotificationRequest request = sampleRequest();
        request.hasDefaultSound = false;
        m_f.post(request);
        const auto &shown = m_f.screen->shown.constFirst();
        QCOMPARE(shown.body, u"Faster &amp; &lt;b&gt;better&lt;/b&gt;."_s);
        QVERIFY(shown.actions.isEmpty());
        QVERIFY(!shown.hints.contains(u"sound-name"_s));
    }

    void aWaitingRequestCanBeRemoved()
    {
        m_f.agent->add(sampleRequest());
        m_f.agent->pass(4s);
        m_f.agent->notifications->removePending({notificationIdentifier});
        m_f.agent->pass(10s);
        m_f.settleBus();
        QVERIFY(m_f.screen->calls.isEmpty());
    }

    void aNewerRequestTakesThePlaceOfAWaitingOne()
    {
        m_f.agent->add(sampleRequest());
        m_f.agent->pass(4s);
        NotificationRequest newer = sampleRequest();
        newer.title = u"newer"_s;
        m_f.agent->add(newer);
        m_f.agent->pass(5s);
        QTRY_COMPARE(m_f.screen->shown.size(), 1);
        m_f.settleBus();
        QCOMPARE(m_f.screen->shown.size(), 1);
        QCOMPARE(m_f.screen->shown.constFirst().summary, u"newer"_s);
    }

    void aRequestRemovedWhileItIsBeingShownIsTakenBack()
    {
        m_f.screen->duringNotify
            = [this] { m_f.agent->notifications->removePending({notificationIdentifier}); };
        m_f.agent->add(sampleRequest());
        m_f.agent->pass(5s);
        QTRY_COMPARE(m_f.screen->calls, QStringList({u"notify 0"_s, u"close 7"_s}));
        QVERIFY(m_f.screen->shown.isEmpty());
        QVERIFY(m_f.remembered().isEmpty());
    }

    void remembersTheNumberAcrossRuns()
    {
        m_f.post(sampleRequest());
        QCOMPARE(m_f.remembered().value(u"number"_s).toInteger(), 7);
        m_f.restartAgent();
        m_f.agent->add(sampleRequest());
        m_f.agent->pass(5s);
        QTRY_COMPARE(m_f.screen->calls, QStringList({u"notify 0"_s, u"notify 7"_s}));
        QCOMPARE(m_f.screen->shown.size(), 1);
    }

    void theNumberOfAnotherServiceMeansNothing()
    {
        m_f.post(sampleRequest());
        m_f.screen.reset();
        m_f.screen = std::make_unique<NotificationScreen>(m_f.bus, 3);
        m_f.agent->notifications->removeDelivered({notificationIdentifier});
        m_f.post(sampleRequest());
        QCOMPARE(m_f.screen->calls, QStringList{u"notify 0"_s});
    }

    void aDamagedFileIsAsGoodAsNone_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("no JSON") << QByteArray("{");
        QTest::newRow("wrong types")
            << QByteArray("{\"zorvane-update-available\": {\"number\": \"7\", \"by\": 5}}");
        QTest::newRow("no object") << QByteArray("{\"zorvane-update-available\": 7}");
    }

    void aDamagedFileIsAsGoodAsNone()
    {
        QFETCH(QByteArray, content);
        m_f.folder->write(notificationsFile, content);
        m_f.post(sampleRequest());
        QCOMPARE(m_f.screen->calls, QStringList{u"notify 0"_s});
        m_f.screen->click(7, u"default"_s);
        QTRY_COMPARE(m_f.agent->listener->responses.size(), 1);
    }

    void takesBackItsOwnWhereNothingCanBeRemembered()
    {
        const auto path = m_f.folder->path() / notificationsFile.toStdString();
        std::filesystem::create_directories(path / "in the way");
        m_f.agent->add(sampleRequest());
        QTest::ignoreMessage(QtWarningMsg,
            QRegularExpression(u"What is known of notifications could not be stored:"_s));
        m_f.agent->pass(5s);
        QTRY_COMPARE(m_f.screen->shown.size(), 1);
        m_f.settleBus();
        m_f.agent->notifications->removeDelivered({notificationIdentifier});
        QTRY_VERIFY(m_f.screen->shown.isEmpty());
    }

    void removesWhatIsOnTheScreenAlsoFromAnotherRun_data()
    {
        QTest::addColumn<bool>("sameRun");
        QTest::newRow("the same run") << true;
        QTest::newRow("another run") << false;
    }

    void removesWhatIsOnTheScreenAlsoFromAnotherRun()
    {
        QFETCH(bool, sameRun);
        m_f.post(sampleRequest());
        if (!sameRun)
            m_f.restartAgent();
        m_f.agent->notifications->removeDelivered({u"another"_s});
        m_f.agent->notifications->removeDelivered({notificationIdentifier});
        QTRY_VERIFY(m_f.screen->shown.isEmpty());
        QVERIFY(m_f.remembered().isEmpty());
    }

private:
    NotificationFixture m_f;
};

QTEST_GUILESS_MAIN(TestDesktopNotifications)
#include "tst_desktop_notifications.moc"
