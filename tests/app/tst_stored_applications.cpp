#include "sample_applications.h"
#include "store_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using records::BlockedApplication;

class TestStoredApplications : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsTheSavedListAndTellsTheFilter()
    {
        StoreFixture f;
        f.storeList({sampleApplication(u"Tool"_s, u"com.example.Tool"_s)});
        f.system.filterManager.stored.enabled = true;
        f.system.preferences.values.insert(u"protectionRequested"_s, true);
        const auto store = f.loadedStore();
        QVERIFY(store->hasLoadedApplications());
        QCOMPARE(names(*store), QStringList{u"Tool"_s});
        QCOMPARE(f.system.systemExtensions.submitted.size(), 1);
        QVERIFY(f.system.preferences.written.isEmpty());
    }

    void anEmptyListIsAnnouncedToo()
    {
        StoreFixture f;
        app::AppBlockStore store(f.system.ports);
        QList<QVariant> announced;
        connect(&store, &app::AppBlockStore::applicationsChanged, this,
            [&] { announced << store.property("hasLoadedApplications"); });
        QCOMPARE(store.property("hasLoadedApplications"), QVariant(false));
        f.system.scheduler.settle();
        QCOMPARE(announced, QList<QVariant>{true});
    }

    void nothingIsSavedOrHandedOverBeforeTheListIsLoaded()
    {
        StoreFixture f;
        const auto tool = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
        f.storeList({tool});
        f.system.filterManager.stored.enabled = true;
        app::AppBlockStore store(f.system.ports);
        store.add(sampleApplication(u"Other"_s, u"com.example.Other"_s));
        store.remove(tool);
        store.save();
        QVERIFY(store.applications().isEmpty());
        QCOMPARE(f.system.filterManager.loads, 0);
        f.system.scheduler.settle();
        QCOMPARE(store.applications(), QList{tool});
        QCOMPARE(f.storedList(), QList{tool});
        QVERIFY(!f.system.preferences.written.contains(listKey));
    }

    void anUnreadableListLoadsAsEmptyAndIsOverwrittenAtTheNextSave()
    {
        StoreFixture f;
        f.system.preferences.values.insert(listKey, QByteArray("[{\"id\":"));
        const auto store = f.loadedStore();
        QVERIFY(store->hasLoadedApplications());
        QVERIFY(store->applications().isEmpty());
        QVERIFY(!store->alertMessage());
        store->add(sampleApplication(u"Tool"_s, u"com.example.Tool"_s));
        f.system.scheduler.settle();
        QCOMPARE(f.storedList().size(), 1);
    }

    void aListWithOneRecordWithoutPathLoadsAsEmpty()
    {
        StoreFixture f;
        QByteArray bytes = records::encodedApplications(
            {sampleApplication(u"A"_s, u"a"_s), sampleApplication(u"B"_s, u"b"_s)});
        const qsizetype last = bytes.lastIndexOf("\"path\"");
        bytes.replace(last, 6, "\"lost\"");
        f.system.preferences.values.insert(listKey, bytes);
        const auto store = f.loadedStore();
        QVERIFY(store->applications().isEmpty());
    }

    void dropsOwnRecordsOfOlderVersionsAndSaves()
    {
        StoreFixture f;
        const auto tool = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
        f.storeList({sampleApplication(u"Zorvane"_s, u"dev.kestrelworks.Zorvane"_s), tool});
        const auto store = f.loadedStore();
        QCOMPARE(store->applications(), QList{tool});
        QCOMPARE(f.storedList(), QList{tool});
    }

    void inspectsARecordOfAnOlderVersionAgain()
    {
        StoreFixture f;
        auto stale = sampleApplication(u"Old name"_s, u"com.example.Tool"_s);
        stale.inspectionVersion = 4;
        stale.path = u"/Applications/Tool.app"_s;
        f.storeList({stale});
        f.system.addBundle(stale.path, u"com.example.Tool"_s, u"TEAM"_s, u"New name"_s);
        const auto store = f.loadedStore();
        const BlockedApplication &renewed = store->applications().constFirst();
        QCOMPARE(renewed.id, stale.id);
        QCOMPARE(renewed.name, u"New name"_s);
        QCOMPARE(renewed.inspectionVersion, qint64(5));
        QCOMPARE(f.storedList(), store->applications());
    }

    void aStaleRecordWhoseBundleIsGoneStaysAsItWas()
    {
        StoreFixture f;
        auto stale = sampleApplication(u"Gone"_s, u"com.example.Gone"_s);
        stale.inspectionVersion = 4;
        f.storeList({stale});
        const auto store = f.loadedStore();
        QCOMPARE(store->applications(), QList{stale});
        QVERIFY(!store->alertMessage());
    }

    void reinspectionKeepsTheOrderOfTheList()
    {
        StoreFixture f;
        auto stale = sampleApplication(u"A"_s, u"com.example.A"_s);
        stale.auxiliaryCodeIdentities.reset();
        f.system.addBundle(stale.path, u"com.example.A"_s, u"TEAM"_s, u"Z"_s);
        f.storeList({stale, sampleApplication(u"B"_s, u"com.example.B"_s)});
        const auto store = f.loadedStore();
        QCOMPARE(names(*store), QStringList({u"Z"_s, u"B"_s}));
    }

    void reinspectionHandsTheRulesOverOnlyWhenTheFilterIsOn_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }

    void reinspectionHandsTheRulesOverOnlyWhenTheFilterIsOn()
    {
        QFETCH(bool, enabled);
        StoreFixture f;
        f.system.preferences.values.insert(u"protectionRequested"_s, enabled);
        f.storeList({});
        const auto store = f.loadedStore();
        auto stale = sampleApplication(u"A"_s, u"com.example.A"_s);
        stale.inspectionVersion.reset();
        f.system.addBundle(stale.path, u"com.example.A"_s);
        store->add(stale);
        f.system.scheduler.settle();
        if (enabled) {
            f.system.systemExtensions.delegate()->requestDidFinish(
                platform::ActivationResult::Completed);
        }
        f.system.scheduler.settle();
        QCOMPARE(store->isProtectionEnabled(), enabled);
        const int savesBefore = f.system.filterManager.saves;
        store->reinspectStaleApplications();
        f.system.scheduler.settle();
        QCOMPARE(store->applications().constFirst().inspectionVersion, qint64(5));
        QCOMPARE(f.system.filterManager.saves - savesBefore, enabled ? 1 : 0);
    }
};

QTEST_GUILESS_MAIN(TestStoredApplications)
#include "tst_stored_applications.moc"
