#include "answer.h"
#include "own_platform.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;

namespace
{

using Failure = std::optional<PlatformError>;

/** One that comes so late that nobody sees it. */
NotificationRequest request()
{
    return {.identifier = u"zorvane-test"_s,
        .title = u"Zorvane"_s,
        .body = u"A test"_s,
        .categoryIdentifier = u"zorvane-test"_s,
        .userInfo = {{u"number"_s, 1}, {u"text"_s, u"Ä 🍏"_s}},
        .delay = 1h};
}

} // namespace

/** How every system's notifications answer. Nothing is shown: a test is not allowed to, or takes
 * back what it adds before its time. */
class TestNotificationsContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePermissionIsToldAfterTheCall()
    {
        OwnPlatform platform;
        const Answer<NotificationAuthorization> answer;
        platform->notifications->authorization(answer.receiver());
        QCOMPARE(answer.count(), 0);
        QVERIFY(answer.comesOnce());
    }

    void whatIsAddedIsAnsweredOnceAfterTheCall()
    {
        OwnPlatform platform;
        platform->notifications->setCategories(
            {{u"zorvane-test"_s, {{u"open"_s, u"Open"_s, true}}}});
        const Answer<Failure> answer;
        platform->notifications->add(request(), answer.receiver());
        QCOMPARE(answer.count(), 0);
        QVERIFY(answer.comesOnce());
        if (const Failure failure = answer.value()) {
            QVERIFY(!failure->domain.isEmpty());
            QVERIFY(failure->code != 0);
        }
        platform->notifications->removePending({request().identifier});
    }

    void whatIsTakenBackIsNotWaitedFor()
    {
        OwnPlatform platform;
        const Answer<Failure> added;
        platform->notifications->add(request(), added.receiver());
        QVERIFY(added.comesOnce());
        platform->notifications->removePending({request().identifier});
        const Answer<> answer;
        platform->notifications->whenNotNeeded(answer.receiver());
        QCOMPARE(answer.count(), 0);
        QVERIFY(answer.comesOnce());
    }

    void whatWasNeverAddedCanBeTakenBack()
    {
        OwnPlatform platform;
        platform->notifications->removePending({u"zorvane-test-unknown"_s});
        platform->notifications->removeDelivered({u"zorvane-test-unknown"_s, QString()});
        const Answer<> answer;
        platform->notifications->whenNotNeeded(answer.receiver());
        QVERIFY(answer.comesOnce());
    }

    void nothingIsAnsweredOnceThePortIsGone()
    {
        OwnPlatform platform;
        const Answer<Failure> added;
        const Answer<NotificationAuthorization> told;
        platform->notifications->add(request(), added.receiver());
        platform->notifications->authorization(told.receiver());
        platform->notifications.reset();
        QTest::qWait(300);
        QCOMPARE(added.count(), 0);
        QCOMPARE(told.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestNotificationsContract)
#include "tst_notifications_contract.moc"
