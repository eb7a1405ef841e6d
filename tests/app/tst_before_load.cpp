#include "protection_fixture.h"
#include "store_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using app::AppBlockStore;
using filter::FilterStatus;
using Kind = FilterStatus::Kind;

/** What is asked of the store before the saved list has been read. */
class TestBeforeLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStatusBeforeTheListIsLoadedPushesNothing()
    {
        ProtectionFixture f({tool});
        f.system.filterManager.stored.enabled = true;
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.system.filterManager.holdAnswers = true;
        f.store->refreshProtection();
        f.system.filterManager.held.takeFirst()();
        f.system.scheduler.runPosted();
        QVERIFY(!f.store->hasLoadedApplications());
        QCOMPARE(f.store->filterController()->status(), FilterStatus(Kind::Enabled));
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.system.filterManager.saves, 0);
        f.system.filterManager.holdAnswers = false;
        f.system.scheduler.settle();
        QCOMPARE(f.activations(), 1);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
        QVERIFY(f.system.filterManager.stored.enabled);
    }

    void anApprovalAwaitedBeforeTheListIsLoadedActivatesNothing()
    {
        ProtectionFixture f({tool}, true);
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.system.filterManager.loadErrors.emplace_back(
            platform::PlatformError{u"NEFilterErrorDomain"_s, 5, u"permission denied"_s});
        f.store->refreshProtection();
        f.system.scheduler.runBackgroundJob(1);
        f.system.scheduler.runPosted();
        QCOMPARE(f.store->filterController()->status(), FilterStatus(Kind::AwaitingApproval));
        QVERIFY(!f.store->hasLoadedApplications());
        f.store->refreshProtection();
        f.system.scheduler.settle();
        QCOMPARE(f.activations(), 0);
    }

    void inactiveBeforeTheListIsLoadedDecidesNothing()
    {
        ProtectionFixture f({tool});
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.store->refreshProtection();
        f.system.scheduler.runBackgroundJob(1); // the refresh; the load still waits
        f.system.scheduler.runPosted();
        QVERIFY(!f.store->hasLoadedApplications());
        QCOMPARE(f.wish(), std::nullopt);
        f.system.scheduler.settle();
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.activations(), 1);
    }

    void switchingOnBeforeTheListIsLoadedWaitsForIt()
    {
        ProtectionFixture f({tool}, false);
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.store->setProtectionEnabled(true);
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.activations(), 0);
        f.system.scheduler.settle();
        QCOMPARE(f.activations(), 1);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void switchingOffBeforeTheListIsLoadedKeepsTheStoredRulesUntilThen()
    {
        ProtectionFixture f({tool}, true);
        f.system.filterManager.stored.enabled = true;
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.store->setProtectionEnabled(false);
        QCOMPARE(f.system.filterManager.loads, 0);
        f.system.scheduler.settle();
        QCOMPARE(f.wish(), false);
        QVERIFY(!f.system.filterManager.stored.enabled);
    }

    void anAdditionInspectedBeforeTheLoadWaitsForIt()
    {
        StoreFixture f;
        f.storeList({sampleApplication(u"Stored"_s, u"com.example.Stored"_s)});
        f.system.addBundle(u"/A.app"_s, u"com.example.A"_s);
        AppBlockStore store(f.system.ports);
        store.addApplication(QUrl::fromLocalFile(u"/A.app"_s));
        QCOMPARE(f.system.scheduler.waitingBackgroundJobs(), 2);
        f.system.scheduler.runBackgroundJob(1);
        f.system.scheduler.runPosted();
        QVERIFY(!store.hasLoadedApplications());
        QVERIFY(store.isAddingApplication());
        QVERIFY(!f.system.preferences.contains(u"protectionRequested"_s));
        f.system.scheduler.settle();
        QVERIFY(!store.isAddingApplication());
        QCOMPARE(names(store), QStringList({u"A"_s, u"Stored"_s}));
        QCOMPARE(f.storedList().size(), 2);
    }

    void anAdditionThatWaitedForTheLoadIsBlockedToo()
    {
        StoreFixture f;
        f.storeList({sampleApplication(u"Stored"_s, u"com.example.Stored"_s)});
        f.system.preferences.values.insert(u"protectionRequested"_s, true);
        f.system.filterManager.stored.enabled = true;
        f.system.addBundle(u"/A.app"_s, u"com.example.A"_s);
        AppBlockStore store(f.system.ports);
        store.addApplication(QUrl::fromLocalFile(u"/A.app"_s));
        f.system.scheduler.runBackgroundJob(1);
        f.system.scheduler.settle();
        f.system.systemExtensions.delegate()->requestDidFinish(
            platform::ActivationResult::Completed);
        f.system.scheduler.settle();
        QCOMPARE(f.system.filterManager.stored.provider->vendorConfiguration.at(
                     u"blockedCodeIdentities"_s),
            store.blockedCodeIdentityKeys());
        QCOMPARE(store.blockedCodeIdentityKeys().size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestBeforeLoad)
#include "tst_before_load.moc"
