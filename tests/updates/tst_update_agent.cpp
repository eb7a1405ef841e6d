#include "fakes/fake_platform.h"
#include "sample_updates.h"
#include "updates/update_agent.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
using namespace zorvane::tests;
using updates::UpdateAgent;

namespace
{

struct Fixture {
    FakePlatform system;
    std::unique_ptr<UpdateAgent> agent = std::make_unique<UpdateAgent>(system.ports);
    int ended = 0;

    void run()
    {
        agent->run([this] { ++ended; });
        system.scheduler.settle();
    }
};

} // namespace

class TestUpdateAgent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void announcesWhatItsCheckFound()
    {
        Fixture f;
        f.system.manifestFetcher.answers = {answerOf(sampleUpdate(u"2.0"_s))};
        f.run();
        QCOMPARE(f.system.manifestFetcher.requests.size(), 1);
        QCOMPARE(f.system.notifications.pending.size(), 1);
        QCOMPARE(f.system.preferences.string(u"updates.lastNotifiedVersion"_s), u"2.0-0"_s);
    }

    void staysForAsLongAsItsAnnouncementNeedsIt()
    {
        Fixture f;
        f.system.manifestFetcher.answers = {answerOf(sampleUpdate(u"2.0"_s))};
        f.run();
        f.system.scheduler.advance(9min);
        QCOMPARE(f.ended, 0);
        f.system.notifications.notNeeded();
        f.system.scheduler.settle();
        QCOMPARE(f.ended, 1);
        f.system.scheduler.advance(10min);
        QCOMPARE(f.ended, 1);
    }

    void staysTenMinutesAtMost()
    {
        Fixture f;
        f.system.manifestFetcher.answers = {answerOf(sampleUpdate(u"2.0"_s))};
        f.run();
        f.system.scheduler.advance(10min - 1ms);
        QCOMPARE(f.ended, 0);
        f.system.scheduler.advance(1ms);
        QCOMPARE(f.ended, 1);
    }

    void endsAlsoWhenItIsOffline()
    {
        Fixture f;
        f.run();
        f.system.notifications.notNeeded();
        f.system.scheduler.settle();
        QCOMPARE(f.ended, 1);
        QVERIFY(f.system.notifications.pending.isEmpty());
        QVERIFY(f.system.preferences.written.isEmpty());
    }

    void endsAlsoWhenNotifyingFails()
    {
        Fixture f;
        f.system.notifications.addError = platform::PlatformError{u"bus"_s, 1, u"gone"_s};
        f.system.manifestFetcher.answers = {answerOf(sampleUpdate(u"2.0"_s))};
        f.run();
        QVERIFY(f.system.notifications.notNeeded);
        QVERIFY(!f.system.preferences.string(u"updates.lastNotifiedVersion"_s));
    }

    void asksForNothingMoreThanOnceInADay()
    {
        Fixture f;
        f.system.preferences.values.insert(
            u"updates.lastCheckedAt"_s, f.system.scheduler.now().addSecs(-3600));
        f.run();
        QVERIFY(f.system.manifestFetcher.requests.isEmpty());
        QVERIFY(f.system.notifications.notNeeded);
    }

    void announcesARememberedReleaseAlsoWithoutACheck()
    {
        Fixture f;
        f.system.preferences.values.insert(
            u"updates.lastCheckedAt"_s, f.system.scheduler.now().addSecs(-3600));
        f.system.preferences.values.insert(
            u"updates.cachedManifest"_s, updates::encodedUpdate(sampleUpdate(u"2.0"_s)));
        f.agent = std::make_unique<UpdateAgent>(f.system.ports);
        f.run();
        QVERIFY(f.system.manifestFetcher.requests.isEmpty());
        QCOMPARE(f.system.notifications.pending.size(), 1);
    }

    void takesTheAnnouncementOfAWithdrawnReleaseBack()
    {
        Fixture f;
        f.system.manifestFetcher.answers = {answerOf(sampleUpdate(u"1.0"_s))};
        f.run();
        QCOMPARE(f.system.notifications.calls,
            QStringList({u"remove pending zorvane-update-available"_s,
                u"remove delivered zorvane-update-available"_s}));
    }

    void answersTheResponseItself()
    {
        Fixture f;
        f.run();
        const auto delegate = f.system.notifications.delegate();
        QVERIFY(delegate);
        delegate->didReceive(
            {{}, u"ZORVANE_UPDATE"_s, {{u"downloadURL"_s, u"https://kestrelworks.dev/d"_s}}},
            [] {});
        f.system.scheduler.settle();
        QCOMPARE(
            f.system.actions.calls, QStringList({u"front"_s, u"url https://kestrelworks.dev/d"_s}));
        QCOMPARE(f.system.notifications.categories.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestUpdateAgent)
#include "tst_update_agent.moc"
