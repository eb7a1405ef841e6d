#include "desktop_bus/notification_screen.h"
#include "desktop_bus/private_bus.h"
#include "fakes/fake_scheduler.h"
#include "platform/simulated/desktop_notifications.h"
#include "state_folder.h"

#include <memory>
#include <QDBusPendingCall>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;
using simulated::DesktopNotifications;

namespace
{

const QString identifier = u"zorvane-update-available"_s;
const QString fileName = u"notifications.json"_s;

/** Keeps the responses that it hears of. */
class Listener final : public NotificationDelegate
{
public:
    void didReceive(const NotificationResponse &response, std::function<void()> done) override
    {
        responses.append(response);
        acknowledge = std::move(done);
        if (acknowledges)
            acknowledge();
    }

    QList<NotificationResponse> responses;
    std::function<void()> acknowledge;
    bool acknowledges = true;
};

/** One program of the product: the application or the agent. */
struct Program {
    Program(const PrivateBus &bus, const StateFolder &folder)
        : member(bus)
        , notifications(std::make_unique<DesktopNotifications>(
              member.connection(), folder.path() / fileName.toStdString(), scheduler))
    {
        notifications->setDelegate(listener);
        notifications->setCategories(
            {{u"ZORVANE_UPDATE"_s, {{u"DOWNLOAD_UPDATE"_s, u"Download Update"_s, true}}}});
    }

    void add(const NotificationRequest &request)
    {
        notifications->add(request, [this](const auto &error) { accepted = !error; });
    }

    /** Lets time pass here, and everything be done that is due. */
    void pass(std::chrono::seconds time)
    {
        scheduler.settle();
        scheduler.advance(time);
    }

    BusMember member;
    FakeScheduler scheduler;
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
    bool accepted = false;
    std::unique_ptr<DesktopNotifications> notifications;
};

NotificationRequest sampleRequest()
{
    return {
        .identifier = identifier,
        .title = u"Zorvane 2.1 is available"_s,
        .body = u"Faster & <b>better</b>."_s,
        .hasDefaultSound = true,
        .categoryIdentifier = u"ZORVANE_UPDATE"_s,
        .userInfo = {{u"downloadURL"_s, u"https://kestrelworks.dev/d"_s}},
        .delay = 5s,
    };
}

} // namespace

class TestDesktopNotifications : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_bus = std::make_unique<PrivateBus>(); }

    void init()
    {
        m_folder = std::make_unique<StateFolder>();
        m_screen = std::make_unique<NotificationScreen>(*m_bus, 7);
        m_agent = std::make_unique<Program>(*m_bus, *m_folder);
    }

    void cleanup()
    {
        m_agent.reset();
        m_screen.reset();
        m_folder.reset();
    }

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
            m_screen.reset();
        std::optional<NotificationAuthorization> state;
        std::optional<bool> granted;
        m_agent->notifications->authorization([&](auto answer) { state = answer; });
        m_agent->notifications->requestAuthorization([&](bool answer, const auto &error) {
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
            QDBusConnection(u"none"_s), m_folder->path() / fileName.toStdString(), scheduler);
        std::optional<NotificationAuthorization> state;
        bool notNeeded = false;
        notifications.authorization([&](auto answer) { state = answer; });
        notifications.removeDelivered({identifier});
        notifications.whenNotNeeded([&] { notNeeded = true; });
        scheduler.settle();
        QVERIFY(notNeeded);
        QTRY_COMPARE(state, NotificationAuthorization::Denied);
    }

    void showsARequestAfterItsDelay()
    {
        m_agent->add(sampleRequest());
        QVERIFY(!m_agent->accepted);
        m_agent->pass(4s);
        QVERIFY(m_agent->accepted);
        QVERIFY(m_screen->calls.isEmpty());
        m_agent->pass(1s);
        QTRY_COMPARE(m_screen->shown.size(), 1);
        const auto &shown = m_screen->shown.constFirst();
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
        m_screen->capabilities = {u"body"_s, u"body-markup"_s};
        NotificationRequest request = sampleRequest();
        request.hasDefaultSound = false;
        post(request);
        const auto &shown = m_screen->shown.constFirst();
        QCOMPARE(shown.body, u"Faster &amp; &lt;b&gt;better&lt;/b&gt;."_s);
        QVERIFY(shown.actions.isEmpty());
        QVERIFY(!shown.hints.contains(u"sound-name"_s));
    }

    void aWaitingRequestCanBeRemoved()
    {
        m_agent->add(sampleRequest());
        m_agent->pass(4s);
        m_agent->notifications->removePending({identifier});
        m_agent->pass(10s);
        settleBus();
        QVERIFY(m_screen->calls.isEmpty());
    }

    void aNewerRequestTakesThePlaceOfAWaitingOne()
    {
        m_agent->add(sampleRequest());
        m_agent->pass(4s);
        NotificationRequest newer = sampleRequest();
        newer.title = u"newer"_s;
        m_agent->add(newer);
        m_agent->pass(5s);
        QTRY_COMPARE(m_screen->shown.size(), 1);
        settleBus();
        QCOMPARE(m_screen->shown.size(), 1);
        QCOMPARE(m_screen->shown.constFirst().summary, u"newer"_s);
    }

    void aRequestRemovedWhileItIsBeingShownIsTakenBack()
    {
        m_screen->duringNotify = [this] { m_agent->notifications->removePending({identifier}); };
        m_agent->add(sampleRequest());
        m_agent->pass(5s);
        QTRY_COMPARE(m_screen->calls, QStringList({u"notify 0"_s, u"close 7"_s}));
        QVERIFY(m_screen->shown.isEmpty());
        QVERIFY(remembered().isEmpty());
    }

    void remembersTheNumberAcrossRuns()
    {
        post(sampleRequest());
        QCOMPARE(remembered().value(u"number"_s).toInteger(), 7);
        m_agent = std::make_unique<Program>(*m_bus, *m_folder);
        m_agent->add(sampleRequest());
        m_agent->pass(5s);
        QTRY_COMPARE(m_screen->calls, QStringList({u"notify 0"_s, u"notify 7"_s}));
        QCOMPARE(m_screen->shown.size(), 1);
    }

    void theNumberOfAnotherServiceMeansNothing()
    {
        post(sampleRequest());
        m_screen.reset();
        m_screen = std::make_unique<NotificationScreen>(*m_bus, 3);
        m_agent->notifications->removeDelivered({identifier});
        post(sampleRequest());
        QCOMPARE(m_screen->calls, QStringList{u"notify 0"_s});
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
        m_folder->write(fileName, content);
        post(sampleRequest());
        QCOMPARE(m_screen->calls, QStringList{u"notify 0"_s});
        m_screen->click(7, u"default"_s);
        QTRY_COMPARE(m_agent->listener->responses.size(), 1);
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
        post(sampleRequest());
        if (!sameRun)
            m_agent = std::make_unique<Program>(*m_bus, *m_folder);
        m_agent->notifications->removeDelivered({u"another"_s});
        m_agent->notifications->removeDelivered({identifier});
        QTRY_VERIFY(m_screen->shown.isEmpty());
        QVERIFY(remembered().isEmpty());
    }

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
        post(sampleRequest());
        qunsetenv("XDG_ACTIVATION_TOKEN");
        m_screen->click(7, key, u"token-1"_s);
        QTRY_COMPARE(m_agent->listener->responses.size(), 1);
        const auto &response = m_agent->listener->responses.constFirst();
        QCOMPARE(response.actionIdentifier, action);
        QCOMPARE(response.categoryIdentifier, u"ZORVANE_UPDATE"_s);
        QCOMPARE(response.userInfo, sampleRequest().userInfo);
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), "token-1");
        QVERIFY(remembered().isEmpty());
    }

    void aTokenForAnotherNotificationIsNotUsed()
    {
        post(sampleRequest());
        qunsetenv("XDG_ACTIVATION_TOKEN");
        Q_EMIT m_screen->ActivationToken(8, u"token-8"_s);
        m_screen->click(7, u"default"_s);
        QTRY_COMPARE(m_agent->listener->responses.size(), 1);
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    }

    void aClickOnSomebodyElsesNotificationIsNoResponse()
    {
        post(sampleRequest());
        m_screen->click(6, u"default"_s);
        m_screen->click(8, u"DOWNLOAD_UPDATE"_s);
        settleBus();
        QVERIFY(m_agent->listener->responses.isEmpty());
        QVERIFY(!remembered().isEmpty());
    }

    void theProgramThatPostedAnswersAndNoOtherDoes()
    {
        Program application(*m_bus, *m_folder);
        post(sampleRequest());
        m_screen->click(7, u"default"_s);
        QTRY_COMPARE(m_agent->listener->responses.size(), 1);
        settleBus();
        QVERIFY(application.listener->responses.isEmpty());
    }

    void theApplicationAnswersForAProgramThatIsGone()
    {
        Program application(*m_bus, *m_folder);
        post(sampleRequest());
        m_agent.reset();
        m_screen->click(7, u"default"_s);
        QTRY_COMPARE(application.listener->responses.size(), 1);
        QCOMPARE(application.listener->responses.constFirst().userInfo, sampleRequest().userInfo);
        m_screen->click(7, u"default"_s);
        settleBus();
        QCOMPARE(application.listener->responses.size(), 1);
    }

    void oneOfSeveralAnswersForAProgramThatIsGone()
    {
        Program application(*m_bus, *m_folder);
        Program nextAgent(*m_bus, *m_folder);
        post(sampleRequest());
        m_agent.reset();
        m_screen->click(7, u"default"_s);
        settleBus();
        QTRY_COMPARE(
            application.listener->responses.size() + nextAgent.listener->responses.size(), 1);
    }

    void aDismissedNotificationIsForgotten()
    {
        post(sampleRequest());
        QTRY_VERIFY(!remembered().isEmpty());
        m_screen->dismiss(7);
        QTRY_VERIFY(remembered().isEmpty());
        QVERIFY(m_agent->listener->responses.isEmpty());
    }

    void theProgramIsNeededUntilTheResponseIsDealtWith()
    {
        m_agent->listener->acknowledges = false;
        m_agent->add(sampleRequest());
        const auto notNeeded = watchNeed();
        m_agent->pass(5s);
        QTRY_COMPARE(m_screen->shown.size(), 1);
        settleBus();
        QVERIFY(!*notNeeded);
        m_screen->click(7, u"default"_s);
        QTRY_COMPARE(m_agent->listener->responses.size(), 1);
        settleBus();
        QVERIFY(!*notNeeded);
        m_agent->listener->acknowledge();
        m_agent->scheduler.settle();
        QVERIFY(*notNeeded);
    }

    void theProgramIsNotNeededWhen_data()
    {
        QTest::addColumn<QString>("event");
        for (const QString &event :
            {u"nothing was posted"_s, u"the request is removed"_s, u"the notification is removed"_s,
                u"the user dismisses it"_s, u"the service is gone"_s, u"nobody shows it"_s})
            QTest::addRow("%s", qPrintable(event)) << event;
    }

    void theProgramIsNotNeededWhen()
    {
        QFETCH(QString, event);
        if (event == u"nothing was posted"_s) {
            // nothing is posted
        } else if (event == u"the request is removed"_s) {
            m_agent->add(sampleRequest());
        } else if (event == u"nobody shows it"_s) {
            m_screen.reset();
            QTest::ignoreMessage(
                QtWarningMsg, QRegularExpression(u"The desktop did not show the notification"_s));
            m_agent->add(sampleRequest());
        } else {
            post(sampleRequest());
            QTRY_VERIFY(!remembered().isEmpty());
        }
        const auto notNeeded = watchNeed();
        if (event == u"the request is removed"_s)
            m_agent->notifications->removePending({identifier});
        else if (event == u"the notification is removed"_s)
            m_agent->notifications->removeDelivered({identifier});
        else if (event == u"the user dismisses it"_s)
            m_screen->dismiss(7);
        else if (event == u"the service is gone"_s)
            m_screen.reset();
        else if (event == u"nobody shows it"_s)
            m_agent->pass(5s);
        QTRY_VERIFY(*notNeeded);
    }

private:
    /** Lets a request of the agent come to the screen. */
    void post(const NotificationRequest &request)
    {
        const auto before = m_screen->calls.size();
        m_agent->add(request);
        m_agent->pass(request.delay);
        QTRY_COMPARE(m_screen->calls.size(), before + 1);
        QTRY_VERIFY(remembered().value(u"number"_s).toInteger() > 0);
    }

    /** What the shared file says of the notification. */
    [[nodiscard]] QJsonObject remembered() const
    {
        return QJsonDocument::fromJson(m_folder->read(fileName))
            .object()
            .value(identifier)
            .toObject();
    }

    /** True once the agent is no longer needed; looks at it once now. */
    std::shared_ptr<bool> watchNeed()
    {
        auto notNeeded = std::make_shared<bool>(false);
        m_agent->notifications->whenNotNeeded([notNeeded] { *notNeeded = true; });
        m_agent->scheduler.settle();
        return notNeeded;
    }

    /** Lets everything arrive that is on its way: answers come in order. */
    void settleBus()
    {
        BusMember probe(*m_bus);
        const auto question = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
            u"/org/freedesktop/Notifications"_s, u"org.freedesktop.Notifications"_s,
            u"GetCapabilities"_s);
        for (int i = 0; i < 3; ++i) {
            const QDBusPendingCall call = probe.connection().asyncCall(question);
            QTRY_VERIFY(call.isFinished());
        }
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<StateFolder> m_folder;
    std::unique_ptr<NotificationScreen> m_screen;
    std::unique_ptr<Program> m_agent;
};

QTEST_GUILESS_MAIN(TestDesktopNotifications)
#include "tst_desktop_notifications.moc"
