#include "fakes/fake_platform.h"
#include "sample_updates.h"
#include "updates/update_notification_controller.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
using namespace zorvane::tests;
using platform::NotificationAuthorization;
using platform::PlatformError;
using updates::AppUpdate;
using updates::UpdateNotificationController;

namespace
{

const QString updateIdentifier = u"zorvane-update-available"_s;
const QString tokenKey = u"updates.lastNotifiedVersion"_s;
const PlatformError refusal{u"UNErrorDomain"_s, 1, u"not allowed"_s};

struct Fixture {
    FakePlatform system;
    std::shared_ptr<UpdateNotificationController> controller
        = std::make_shared<UpdateNotificationController>(UpdateNotificationController::Services{
            system.scheduler, system.preferences, system.notifications, system.actions});
    FakeUserNotifications &center = system.notifications;

    /** How an announcement ends: "done", the text of its error, or not at all. */
    QString notify(const std::optional<AppUpdate> &update)
    {
        QString result = u"not ended"_s;
        controller->notifyUpdateAvailability(
            update, [&](const auto &error) { result = error ? error->description : u"done"_s; });
        system.scheduler.settle();
        return result;
    }

    [[nodiscard]] qsizetype announcements() const
    {
        return center.calls.count(u"add "_s + updateIdentifier);
    }

    [[nodiscard]] std::optional<QString> token() const
    {
        return system.preferences.string(tokenKey);
    }
};

} // namespace

class TestUpdateNotificationController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void registersItselfAndItsOneCategory()
    {
        Fixture f;
        QVERIFY(!f.center.delegate());
        f.controller->registerCategories();
        QCOMPARE(f.center.delegate(), f.controller);
        QCOMPARE(f.center.categories.size(), 1);
        QCOMPARE(f.center.categories.constFirst(),
            (platform::NotificationCategory{
                u"ZORVANE_UPDATE"_s, {{u"DOWNLOAD_UPDATE"_s, u"Download Update"_s, true}}}));
    }

    void postsTheAnnouncementAsStated()
    {
        Fixture f;
        AppUpdate update = sampleUpdate(u"2.1"_s, 57);
        update.releaseNotes = u"Faster."_s;
        QCOMPARE(f.notify(update), u"done"_s);
        QCOMPARE(f.center.pending.size(), 1);
        const auto &request = f.center.pending.constFirst();
        QCOMPARE(request.identifier, updateIdentifier);
        QCOMPARE(request.title, u"Zorvane 2.1 is available"_s);
        QCOMPARE(request.body, u"Faster."_s);
        QVERIFY(request.hasDefaultSound);
        QCOMPARE(request.categoryIdentifier, u"ZORVANE_UPDATE"_s);
        QCOMPARE(request.userInfo,
            (QVariantMap{{u"downloadURL"_s, u"https://kestrelworks.dev/zorvane"_s}}));
        QCOMPARE(request.delay, 5s);
        QCOMPARE(f.token(), u"2.1-57"_s);
    }

    void aReleaseWithoutNotesHasAStandardBody()
    {
        Fixture f;
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s)), u"done"_s);
        QCOMPARE(f.center.pending.constFirst().body, u"A new version is ready to download."_s);
    }

    void announcesAReleaseOnceAndANewBuildAgain()
    {
        Fixture f;
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s, 57)), u"done"_s);
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s, 57)), u"done"_s);
        f.system.scheduler.advance(5s);
        QCOMPARE(f.announcements(), 1);
        QCOMPARE(f.center.delivered.size(), 1);
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s, 58)), u"done"_s);
        f.system.scheduler.advance(5s);
        QCOMPARE(f.announcements(), 2);
        QCOMPARE(f.center.delivered.size(), 1);
        QCOMPARE(f.token(), u"2.1-58"_s);
    }

    void noBuildAndBuildZeroAreOneRelease()
    {
        Fixture f;
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s)), u"done"_s);
        QCOMPARE(f.token(), u"2.1-0"_s);
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s, 0)), u"done"_s);
        QCOMPARE(f.center.pending.size(), 1);
    }

    void anAbsentUpdateRemovesANotificationThatStillWaits()
    {
        Fixture f;
        f.notify(sampleUpdate(u"2.1"_s));
        f.system.scheduler.advance(4s);
        QCOMPARE(f.notify(std::nullopt), u"done"_s);
        QVERIFY(f.center.pending.isEmpty());
        f.system.scheduler.advance(10s);
        QVERIFY(f.center.delivered.isEmpty());
        QCOMPARE(f.token(), u"2.1-0"_s);
    }

    void anAbsentUpdateRemovesADeliveredNotification()
    {
        Fixture f;
        f.notify(sampleUpdate(u"2.1"_s));
        f.system.scheduler.advance(5s);
        f.notify(std::nullopt);
        QVERIFY(f.center.delivered.isEmpty());
        QCOMPARE(f.center.calls.last(2),
            QStringList({u"remove pending zorvane-update-available"_s,
                u"remove delivered zorvane-update-available"_s}));
    }

    void aReleaseThatComesBackIsNotAnnouncedTwice()
    {
        Fixture f;
        f.notify(sampleUpdate(u"2.1"_s));
        f.notify(std::nullopt);
        f.notify(sampleUpdate(u"2.1"_s));
        QVERIFY(f.center.pending.isEmpty());
    }

    void removesAWaitingNotificationBeforeItAddsTheNext()
    {
        Fixture f;
        f.notify(sampleUpdate(u"2.1"_s));
        f.notify(sampleUpdate(u"2.2"_s));
        QCOMPARE(f.center.calls.last(2),
            QStringList(
                {u"remove pending zorvane-update-available"_s, u"add zorvane-update-available"_s}));
        QCOMPARE(f.center.pending.size(), 1);
    }

    void postsNothingAndKeepsNothingWithoutAuthorization_data()
    {
        QTest::addColumn<NotificationAuthorization>("state");
        QTest::newRow("denied") << NotificationAuthorization::Denied;
        QTest::newRow("any other state") << NotificationAuthorization::Ephemeral;
    }

    void postsNothingAndKeepsNothingWithoutAuthorization()
    {
        QFETCH(NotificationAuthorization, state);
        Fixture f;
        f.center.state = state;
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s)), u"done"_s);
        QVERIFY(f.center.calls.isEmpty());
        QCOMPARE(f.center.authorizationRequests, 0);
        QVERIFY(!f.token());
    }

    void aProvisionalAuthorizationIsEnough()
    {
        Fixture f;
        f.center.state = NotificationAuthorization::Provisional;
        f.notify(sampleUpdate(u"2.1"_s));
        QCOMPARE(f.center.pending.size(), 1);
    }

    void asksTheUserIfItIsOpen_data()
    {
        QTest::addColumn<bool>("grants");
        QTest::newRow("granted") << true;
        QTest::newRow("not granted") << false;
    }

    void asksTheUserIfItIsOpen()
    {
        QFETCH(bool, grants);
        Fixture f;
        f.center.state = NotificationAuthorization::NotDetermined;
        f.center.grants = grants;
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s)), u"done"_s);
        QCOMPARE(f.center.authorizationRequests, 1);
        QCOMPARE(f.center.pending.size(), grants ? 1 : 0);
        QCOMPARE(f.token().has_value(), grants);
    }

    void aFailedRequestForAuthorizationIsPassedOn()
    {
        Fixture f;
        f.center.state = NotificationAuthorization::NotDetermined;
        f.center.authorizationError = refusal;
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s)), refusal.description);
        QVERIFY(f.center.calls.isEmpty());
        QVERIFY(!f.token());
    }

    void aFailureToAddIsPassedOnAndTriedAgain()
    {
        Fixture f;
        f.center.addError = refusal;
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s)), refusal.description);
        QVERIFY(!f.token());
        f.center.addError.reset();
        QCOMPARE(f.notify(sampleUpdate(u"2.1"_s)), u"done"_s);
        QCOMPARE(f.token(), u"2.1-0"_s);
    }

    void theTokenIsKeptOnlyOnceTheSystemHasAccepted()
    {
        Fixture f;
        f.controller->notifyUpdateAvailability(sampleUpdate(u"2.1"_s), [](const auto &) {});
        f.system.scheduler.runBackground();
        QVERIFY(!f.token());
        f.system.scheduler.settle();
        QVERIFY(f.token());
    }

    void anAnswerAfterItsEndIsDropped()
    {
        Fixture f;
        bool ended = false;
        f.controller->notifyUpdateAvailability(
            sampleUpdate(u"2.1"_s), [&](const auto &) { ended = true; });
        f.system.scheduler.runBackground();
        f.controller.reset();
        f.system.scheduler.settle();
        QVERIFY(!ended);
        QVERIFY(f.center.calls.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestUpdateNotificationController)
#include "tst_update_notification_controller.moc"
