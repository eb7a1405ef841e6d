// Who hears of a click, and how long a program is needed for it.

#include "notification_fixture.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;

class TestNotificationResponses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_f.restart(); }

    void tellsOfAResponse_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("action");
        QTest::newRow("the notification itself") << u"default"_s << QString();
        QTest::newRow("its action") << u"DOWNLOAD_UPDATE"_s << u"DOWNLOAD_UPDATE"_s;
    }

    void tellsOfAResponse()
    {
        QFETCH(QString, key);
        QFETCH(QString, action);
        m_f.post(sampleRequest());
        qunsetenv("XDG_ACTIVATION_TOKEN");
        m_f.screen->click(7, key, u"token-1"_s);
        QTRY_COMPARE(m_f.agent->listener->responses.size(), 1);
        const auto &response = m_f.agent->listener->responses.constFirst();
        QCOMPARE(response.actionIdentifier, action);
        QCOMPARE(response.categoryIdentifier, u"ZORVANE_UPDATE"_s);
        QCOMPARE(response.userInfo, sampleRequest().userInfo);
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), "token-1");
        QVERIFY(m_f.remembered().isEmpty());
    }

    void aTokenForAnotherNotificationIsNotUsed()
    {
        m_f.post(sampleRequest());
        qunsetenv("XDG_ACTIVATION_TOKEN");
        Q_EMIT m_f.screen->ActivationToken(8, u"token-8"_s);
        m_f.screen->click(7, u"default"_s);
        QTRY_COMPARE(m_f.agent->listener->responses.size(), 1);
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    }

    void aClickOnSomebodyElsesNotificationIsNoResponse()
    {
        m_f.post(sampleRequest());
        m_f.screen->click(6, u"default"_s);
        m_f.screen->click(8, u"DOWNLOAD_UPDATE"_s);
        m_f.settleBus();
        QVERIFY(m_f.agent->listener->responses.isEmpty());
        QVERIFY(!m_f.remembered().isEmpty());
    }

    void theProgramThatPostedAnswersAndNoOtherDoes()
    {
        NotifyingProgram application(m_f.bus, *m_f.folder);
        m_f.post(sampleRequest());
        m_f.screen->click(7, u"default"_s);
        QTRY_COMPARE(m_f.agent->listener->responses.size(), 1);
        m_f.settleBus();
        QVERIFY(application.listener->responses.isEmpty());
    }

    void theApplicationAnswersForAProgramThatIsGone()
    {
        NotifyingProgram application(m_f.bus, *m_f.folder);
        m_f.post(sampleRequest());
        m_f.agent.reset();
        m_f.screen->click(7, u"default"_s);
        QTRY_COMPARE(application.listener->responses.size(), 1);
        QCOMPARE(application.listener->responses.constFirst().userInfo, sampleRequest().userInfo);
        m_f.screen->click(7, u"default"_s);
        m_f.settleBus();
        QCOMPARE(application.listener->responses.size(), 1);
    }

    void oneOfSeveralAnswersForAProgramThatIsGone()
    {
        NotifyingProgram application(m_f.bus, *m_f.folder);
        NotifyingProgram nextAgent(m_f.bus, *m_f.folder);
        m_f.post(sampleRequest());
        m_f.agent.reset();
        m_f.screen->click(7, u"default"_s);
        m_f.settleBus();
        QTRY_COMPARE(
            application.listener->responses.size() + nextAgent.listener->responses.size(), 1);
    }

    void aServiceThatTakesThePlaceOfAnotherMeansItsOwnByANumber()
    {
        m_f.post(sampleRequest());
        const auto notNeeded = m_f.watchNeed();
        NotificationScreen next(m_f.bus, 7);
        next.click(7, u"default"_s);
        m_f.settleBus();
        QVERIFY(m_f.agent->listener->responses.isEmpty());
        QVERIFY(*notNeeded);
    }

    void aDismissedNotificationIsForgotten()
    {
        m_f.post(sampleRequest());
        QTRY_VERIFY(!m_f.remembered().isEmpty());
        m_f.screen->dismiss(7);
        QTRY_VERIFY(m_f.remembered().isEmpty());
        QVERIFY(m_f.agent->listener->responses.isEmpty());
    }

    void theProgramIsNeededUntilTheResponseIsDealtWith()
    {
        m_f.agent->listener->acknowledges = false;
        m_f.agent->add(sampleRequest());
        const auto notNeeded = m_f.watchNeed();
        m_f.agent->pass(5s);
        QTRY_COMPARE(m_f.screen->shown.size(), 1);
        m_f.settleBus();
        QVERIFY(!*notNeeded);
        m_f.screen->click(7, u"default"_s);
        QTRY_COMPARE(m_f.agent->listener->responses.size(), 1);
        m_f.settleBus();
        QVERIFY(!*notNeeded);
        m_f.agent->listener->acknowledge();
        m_f.agent->scheduler.settle();
        QVERIFY(*notNeeded);
    }

    void theProgramIsNotNeededWhen_data()
    {
        using Act = std::function<void(NotificationFixture &)>;
        QTest::addColumn<Act>("before");
        QTest::addColumn<Act>("event");
        const Act nothing = [](auto &) {};
        const Act add = [](auto &f) { f.agent->add(sampleRequest()); };
        const Act post = [](auto &f) { f.post(sampleRequest()); };
        const auto row = [](const char *name, const Act &before, const Act &event) {
            QTest::newRow(name) << before << event;
        };
        row("nothing was posted", nothing, nothing);
        row("the request is removed", add,
            [](auto &f) { f.agent->notifications->removePending({notificationIdentifier}); });
        row("the notification is removed", post,
            [](auto &f) { f.agent->notifications->removeDelivered({notificationIdentifier}); });
        row("the user dismisses it", post, [](auto &f) { f.screen->dismiss(7); });
        row("the service is gone", post, [](auto &f) { f.screen.reset(); });
        row("nobody shows it", add, [](auto &f) {
            f.screen.reset();
            QTest::ignoreMessage(
                QtWarningMsg, QRegularExpression(u"The desktop did not show the notification"_s));
            f.agent->pass(5s);
        });
        row("nobody can answer it", add, [](auto &f) {
            f.screen->capabilities = QStringList{u"body"_s};
            f.agent->pass(5s);
        });
    }

    void theProgramIsNotNeededWhen()
    {
        using Act = std::function<void(NotificationFixture &)>;
        QFETCH(Act, before);
        QFETCH(Act, event);
        before(m_f);
        const auto notNeeded = m_f.watchNeed();
        event(m_f);
        QTRY_VERIFY(*notNeeded);
    }

private:
    NotificationFixture m_f;
};

QTEST_GUILESS_MAIN(TestNotificationResponses)
#include "tst_notification_responses.moc"
