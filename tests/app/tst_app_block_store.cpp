#include "sample_applications.h"
#include "store_fixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using app::AppBlockStore;
using records::BlockedApplication;

class TestAppBlockStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addsADroppedApplication()
    {
        StoreFixture f;
        f.system.addBundle(
            u"/Applications/Tool.app"_s, u"com.example.Tool"_s, u"TEAM"_s, u"Tool"_s);
        const auto store = f.loadedStore();
        f.drop(*store, u"/Applications/Tool.app"_s);
        QCOMPARE(names(*store), QStringList{u"Tool"_s});
        const BlockedApplication &application = store->applications().constFirst();
        QVERIFY(!application.id.isNull());
        QCOMPARE(application.inspectionVersion, qint64(5));
        QVERIFY(application.auxiliaryCodeIdentities);
        QCOMPARE(f.storedList(), store->applications());
        QVERIFY(f.system.preferences.boolean(u"protectionRequested"_s));
        QCOMPARE(f.system.systemExtensions.submitted.size(), 1);
        QVERIFY(!store->alertMessage());
    }

    void readsNothingInItsConstructor()
    {
        StoreFixture f;
        f.storeList({sampleApplication(u"Tool"_s, u"com.example.Tool"_s)});
        const AppBlockStore store(f.system.ports);
        QVERIFY(store.applications().isEmpty());
        QVERIFY(!store.hasLoadedApplications());
        QCOMPARE(f.system.filterManager.loads, 0);
        QCOMPARE(f.system.scheduler.waitingBackgroundJobs(), 1);
        QVERIFY(!store.isMarketingPreview());
    }

    void aSecondDropDuringAnAdditionDoesNothing()
    {
        StoreFixture f;
        f.system.addBundle(u"/A.app"_s, u"com.example.A"_s);
        f.system.addBundle(u"/B.app"_s, u"com.example.B"_s);
        const auto store = f.loadedStore();
        store->addApplication(QUrl::fromLocalFile(u"/A.app"_s));
        QVERIFY(store->isAddingApplication());
        store->addApplication(QUrl::fromLocalFile(u"/B.app"_s));
        QCOMPARE(f.system.fileAccess.begun, 1);
        f.system.scheduler.settle();
        QVERIFY(!store->isAddingApplication());
        QCOMPARE(names(*store), QStringList{u"A"_s});
        QVERIFY(!store->alertMessage());
    }

    void refusesASecondRecordWithTheSameSigningIdentifier()
    {
        StoreFixture f;
        f.system.preferences.values.insert(u"protectionRequested"_s, false);
        f.storeList({sampleApplication(u"Old"_s, u"com.example.Tool"_s)});
        f.system.addBundle(
            u"/Other/New.app"_s, u"com.example.Tool"_s, u"OTHERTEAM"_s, u"New Tool"_s);
        const auto store = f.loadedStore();
        f.drop(*store, u"/Other/New.app"_s);
        QCOMPARE(store->alertMessage(), u"New Tool is already on the list."_s);
        QCOMPARE(names(*store), QStringList{u"Old"_s});
        QVERIFY(f.system.systemExtensions.submitted.isEmpty());
    }

    void refusesItsOwnBundle()
    {
        StoreFixture f;
        f.system.addBundle(u"/Applications/Zorvane.app"_s, u"dev.kestrelworks.Zorvane"_s);
        const auto store = f.loadedStore();
        f.drop(*store, u"/Applications/Zorvane.app"_s);
        QCOMPARE(store->alertMessage(), u"Zorvane cannot block itself."_s);
        QVERIFY(store->applications().isEmpty());
    }

    void refusesABundleWhoseHelperIsOwn()
    {
        StoreFixture f;
        const auto store = f.loadedStore();
        auto application = sampleApplication(u"Wrapper"_s, u"com.example.Wrapper"_s);
        application.auxiliaryCodeIdentities
            = {{u"dev.kestrelworks.Zorvane.Helper"_s, std::nullopt}};
        store->add(application);
        QCOMPARE(store->alertMessage(), u"Zorvane cannot block itself."_s);
        QVERIFY(store->applications().isEmpty());
    }

    void refusesABundleWithTheRunningBundlesIdentifier()
    {
        StoreFixture f;
        f.system.mainBundle.bundleIdentifier = u"org.example.Renamed"_s;
        const auto store = f.loadedStore();
        store->add(sampleApplication(u"Renamed"_s, u"org.example.Renamed"_s));
        QCOMPARE(store->alertMessage(), u"Zorvane cannot block itself."_s);
    }

    void sortsAlphaBeforeBeta()
    {
        StoreFixture f;
        const auto store = f.loadedStore();
        store->add(sampleApplication(u"Beta"_s, u"com.example.Beta"_s));
        store->add(sampleApplication(u"alpha"_s, u"com.example.alpha"_s));
        QCOMPARE(names(*store), QStringList({u"alpha"_s, u"Beta"_s}));
    }

    void inspectionFailuresBecomeTheAlert_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("message");
        QTest::newRow("no application")
            << u"/tmp/notes.txt"_s << u"Drop an application with the .app extension."_s;
        QTest::newRow("no identifier")
            << u"/Nameless.app"_s << u"This application's identifier could not be read."_s;
        QTest::newRow("unsigned")
            << u"/Unsigned.app"_s
            << u"This application does not have an identifiable code signature."_s;
    }

    void inspectionFailuresBecomeTheAlert()
    {
        QFETCH(QString, path);
        QFETCH(QString, message);
        StoreFixture f;
        f.system.bundles.information.insert(u"/Nameless.app"_s, {});
        f.system.bundles.information.insert(
            u"/Unsigned.app"_s, {{u"CFBundleIdentifier"_s, u"com.example.Unsigned"_s}});
        const auto store = f.loadedStore();
        f.drop(*store, path);
        QCOMPARE(store->alertMessage(), message);
        QVERIFY(!store->isAddingApplication());
        QVERIFY(store->applications().isEmpty());
        store->dismissAlert();
        QVERIFY(!store->alertMessage());
    }

    void endsFileAccessOnlyWhereItWasGranted_data()
    {
        QTest::addColumn<bool>("granted");
        QTest::newRow("granted") << true;
        QTest::newRow("not granted") << false;
    }

    void endsFileAccessOnlyWhereItWasGranted()
    {
        QFETCH(bool, granted);
        StoreFixture f;
        f.system.fileAccess.grants = granted;
        const auto store = f.loadedStore();
        store->addApplication(QUrl::fromLocalFile(u"/A.app"_s));
        QCOMPARE(f.system.fileAccess.ended, 0);
        f.system.scheduler.settle();
        QCOMPARE(f.system.fileAccess.begun, 1);
        QCOMPARE(f.system.fileAccess.ended, granted ? 1 : 0);
    }

    void tellsTheSchedulerHowUrgentItsWorkIs()
    {
        using platform::Priority;
        StoreFixture f;
        // Where the filter is not asked for its state, which is work in the background too.
        f.system.mainBundle.path = "/tmp/Zorvane.app";
        auto stale = sampleApplication(u"A"_s, u"com.example.A"_s);
        stale.inspectionVersion = 4;
        f.storeList({stale});
        f.system.preferences.values.insert(u"protectionRequested"_s, false);
        const auto store = f.loadedStore();
        store->addApplication(QUrl::fromLocalFile(u"/A.app"_s));
        const auto load = Priority::UserInitiated;
        const auto updateCheck = Priority::Utility;
        const auto reinspection = Priority::Utility;
        const auto preparation = Priority::Utility;
        const auto addition = Priority::UserInitiated;
        QCOMPARE(f.system.scheduler.priorities(),
            (QList{load, updateCheck, reinspection, preparation, addition}));
    }

    void removesByIdAndHandsTheRulesOverWhateverTheStatus()
    {
        StoreFixture f;
        const auto a = sampleApplication(u"A"_s, u"a"_s);
        const auto b = sampleApplication(u"B"_s, u"b"_s);
        f.storeList({a, b});
        const auto store = f.loadedStore();
        QVERIFY(!store->isProtectionEnabled());
        store->remove(a);
        f.system.scheduler.settle();
        QCOMPARE(store->applications(), QList{b});
        QCOMPARE(f.storedList(), QList{b});
        QVERIFY(f.system.filterManager.stored.provider);
        QCOMPARE(f.system.filterManager.stored.provider->vendorConfiguration.at(
                     u"blockedCodeIdentities"_s),
            QStringList{records::identityKey({u"b"_s, u"TEAM"_s})});
    }

    void removingTheLastApplicationLeavesProtectionOn()
    {
        StoreFixture f;
        const auto a = sampleApplication(u"A"_s, u"a"_s);
        f.storeList({a});
        f.system.filterManager.stored.enabled = true;
        f.system.preferences.values.insert(u"protectionRequested"_s, true);
        const auto store = f.loadedStore();
        store->remove(a);
        f.system.scheduler.settle();
        QVERIFY(f.system.filterManager.stored.enabled);
        QVERIFY(f.system.preferences.boolean(u"protectionRequested"_s));
    }

    void removingAnUnknownRecordChangesNothing()
    {
        StoreFixture f;
        const auto a = sampleApplication(u"A"_s, u"a"_s);
        f.storeList({a});
        const auto store = f.loadedStore();
        store->remove(sampleApplication(u"B"_s, u"b"_s));
        QCOMPARE(store->applications(), QList{a});
    }

    void workThatEndsAfterTheStoreIsGoneIsDropped()
    {
        StoreFixture f;
        f.system.addBundle(u"/A.app"_s, u"com.example.A"_s);
        auto store = f.loadedStore();
        store->addApplication(QUrl::fromLocalFile(u"/A.app"_s));
        f.system.scheduler.runBackground();
        store.reset();
        f.system.scheduler.settle();
        QCOMPARE(f.system.fileAccess.ended, 0);
        QVERIFY(f.storedList().isEmpty());
    }

    void showsBothFoldersForTheInstallation()
    {
        StoreFixture f;
        const auto store = f.loadedStore();
        store->openInstallationFolders();
        QCOMPARE(f.system.actions.calls,
            QStringList({u"folder /Users/someone/Downloads"_s, u"folder /Applications"_s}));
        f.system.actions.downloads.clear();
        f.system.actions.calls.clear();
        store->openInstallationFolders();
        QCOMPARE(f.system.actions.calls, QStringList{u"folder /Applications"_s});
    }

    void announcesItsPublishedState()
    {
        StoreFixture f;
        f.system.addBundle(u"/A.app"_s, u"com.example.A"_s);
        const auto store = f.loadedStore();
        const QSignalSpy list(store.get(), &AppBlockStore::applicationsChanged);
        const QSignalSpy adding(store.get(), &AppBlockStore::isAddingApplicationChanged);
        const QSignalSpy targeted(store.get(), &AppBlockStore::isDropTargetedChanged);
        const QSignalSpy protection(store.get(), &AppBlockStore::protectionChanged);
        store->setDropTargeted(true);
        store->setDropTargeted(true);
        f.drop(*store, u"/A.app"_s);
        QCOMPARE(list.size(), 1);
        QCOMPARE(adding.size(), 2);
        QCOMPARE(targeted.size(), 1);
        QCOMPARE(protection.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestAppBlockStore)
#include "tst_app_block_store.moc"
