#include "app/app_block_store.h"
#include "fakes/fake_platform.h"
#include "updates/sample_updates.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using app::AppBlockStore;

/** How the store is wired to the check for updates. */
class TestStoreUpdates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checksAtLaunchHoweverLatelyAndInSilence()
    {
        FakePlatform system;
        system.preferences.values.insert(u"updates.lastCheckedAt"_s, system.scheduler.now());
        AppBlockStore store(system.ports);
        QVERIFY(system.manifestFetcher.requests.isEmpty());
        system.scheduler.settle();
        QCOMPARE(system.manifestFetcher.requests.size(), 1);
        QVERIFY(!store.updateController()->message());
    }

    void checksForTheUserAndSaysHowItEnded()
    {
        FakePlatform system;
        AppBlockStore store(system.ports);
        system.scheduler.settle();
        system.manifestFetcher.answers = {answerOf(sampleUpdate(u"2.0"_s))};
        store.checkForUpdates(true);
        QCOMPARE(system.manifestFetcher.requests.size(), 1);
        system.scheduler.settle();
        QCOMPARE(store.updateController()->message(), u"Zorvane 2.0 is available."_s);
    }

    void passesEveryChangeOn()
    {
        FakePlatform system;
        AppBlockStore store(system.ports);
        const QSignalSpy own(store.updateController(), &updates::UpdateController::changed);
        const QSignalSpy passedOn(&store, &AppBlockStore::updatesChanged);
        system.scheduler.settle();
        QVERIFY(!own.isEmpty());
        QCOMPARE(passedOn.size(), own.size());
    }

    void hearsOfResponsesAndAnnouncesNothingItself()
    {
        FakePlatform system;
        system.manifestFetcher.answers = {answerOf(sampleUpdate(u"2.0"_s))};
        AppBlockStore store(system.ports);
        system.scheduler.settle();
        QVERIFY(store.updateController()->isBannerVisible());
        QVERIFY(system.notifications.delegate());
        QCOMPARE(system.notifications.categories.size(), 1);
        QVERIFY(system.notifications.calls.isEmpty());
    }

    void aCheckThatWasAskedForEndsWithTheStore()
    {
        FakePlatform system;
        {
            AppBlockStore store(system.ports);
            store.checkForUpdates(true);
        }
        system.scheduler.settle();
        QVERIFY(system.manifestFetcher.requests.isEmpty());
        QVERIFY(!system.notifications.delegate());
    }
};

QTEST_GUILESS_MAIN(TestStoreUpdates)
#include "tst_store_updates.moc"
