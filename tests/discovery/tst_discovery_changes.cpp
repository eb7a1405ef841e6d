#include "discovery_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;

/** A pass over what the last one saw ends early; whatever changes makes the next one whole. */
class TestDiscoveryChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unchangedDataIsNotDecodedAgain()
    {
        // Seen by what decoding would publish: bytes that are the same object to the reader.
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        f.pass(); // the record took the identity in, so this pass was whole
        const auto published = f.store->discoveredProcesses();
        f.pass();
        QVERIFY(f.store->discoveredProcesses().isSharedWith(published));
    }

    void anAddedApplicationMakesTheNextPassWhole()
    {
        DiscoveryFixture f({});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        f.store->add(tool());
        f.pass();
        QCOMPARE(f.auxiliary().size(), 1);
    }

    void aLoadedListMakesTheNextPassWhole()
    {
        DiscoveryFixture f({tool()});
        f.store = std::make_unique<app::AppBlockStore>(f.system.ports);
        f.observe({helper(u"helper"_s)});
        // The pass overtakes the load.
        f.store->refreshDiscoveredProcesses();
        f.runNewestJob();
        QCOMPARE(f.store->discoveredProcesses().size(), 1);
        QVERIFY(!f.store->hasLoadedApplications());
        f.system.scheduler.settle();
        QCOMPARE(f.auxiliary().size(), 0);
        f.pass();
        QCOMPARE(f.auxiliary().size(), 1);
    }

    void aRecordThatIsAgainWhatItWasBeforeItsMergeMakesTheNextPassWhole()
    {
        DiscoveryFixture f({tool()});
        f.start();
        const auto before = f.store->applications().constFirst();
        f.observe({helper(u"helper"_s)});
        f.pass();
        QCOMPARE(f.auxiliary().size(), 1);
        f.store->remove(f.store->applications().constFirst());
        f.store->add(before);
        QCOMPARE(f.store->applications(), QList{before});
        f.pass();
        QCOMPARE(f.auxiliary().size(), 1);
    }

    void aReinspectedApplicationMakesTheNextPassWhole()
    {
        auto stale = sampleApplication(u"Tool"_s, u"com.example.Tool"_s, u"OLD"_s);
        stale.inspectionVersion = records::currentInspectionVersion - 1;
        DiscoveryFixture f({stale});
        f.system.addBundle(stale.path, u"com.example.Tool"_s, u"NEW"_s, u"Tool"_s);
        // Belongs to the application only once its new team is known.
        auto outside = helper(u"outside"_s);
        outside.executablePath = u"/tmp/outside"_s;
        outside.sourceApplicationIdentifier = u"com.example.Tool"_s;
        outside.sourceApplicationTeamIdentifier = u"NEW"_s;
        f.observe({outside});
        f.store = std::make_unique<app::AppBlockStore>(f.system.ports);
        f.system.scheduler.runBackgroundJob(0);
        f.system.scheduler.runPosted();
        QVERIFY(f.store->hasLoadedApplications());
        // The re-inspection waits while two passes see all there is; the first of them brings the
        // record's form up to date.
        for (int i = 0; i < 2; ++i) {
            f.store->refreshDiscoveredProcesses();
            f.runNewestJob();
        }
        QCOMPARE(f.store->applications().constFirst().teamIdentifier, u"OLD"_s);
        QCOMPARE(f.auxiliary().size(), 0);
        f.system.scheduler.settle();
        QCOMPARE(f.store->applications().constFirst().teamIdentifier, u"NEW"_s);
        QCOMPARE(f.auxiliary().size(), 0);
        f.pass();
        QCOMPARE(f.auxiliary(), QList({records::CodeIdentity{u"outside"_s, u"TEAM"_s}}));
    }

    void processesFoundWhileAReinspectedApplicationIsPreparedAreAmongItsComponents()
    {
        auto stale = sampleApplication(u"Old name"_s, u"com.example.Tool"_s);
        stale.inspectionVersion = records::currentInspectionVersion - 1;
        DiscoveryFixture f({stale});
        f.system.addBundle(stale.path, u"com.example.Tool"_s, u"TEAM"_s, u"New name"_s);
        f.start();
        f.store->remove(f.store->applications().constFirst());
        f.store->add(stale);
        f.system.scheduler.settle();
        auto inside = helper(u"inside"_s);
        inside.executablePath = stale.path + u"/inside"_s;
        f.observe({inside});
        f.store->reinspectStaleApplications();
        f.runNewestJob();
        // Inspected, but not listed before its components are made for the processes known now.
        QCOMPARE(f.store->applications(), QList{stale});
        f.store->refreshDiscoveredProcesses();
        f.system.scheduler.runBackgroundJob(1);
        f.system.scheduler.runBackgroundJob(0);
        f.system.scheduler.settle();
        const auto &renewed = f.store->applications().constFirst();
        QCOMPARE(renewed.name, u"New name"_s);
        QCOMPARE(f.store->networkComponents({renewed}).constFirst().size(), 2);
    }

    void aMergedApplicationMakesTheNextPassWhole()
    {
        // The identity that the first pass takes in makes a process outside the bundle match.
        auto outside = helper(u"outside"_s);
        outside.executablePath = u"/tmp/outside"_s;
        outside.sourceApplicationIdentifier = u"helper"_s;
        outside.sourceApplicationTeamIdentifier = u"TEAM"_s;
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s), outside});
        f.pass();
        QCOMPARE(f.auxiliary().size(), 1);
        f.pass();
        QCOMPARE(f.auxiliary().size(), 2);
    }

    void aRecordThatCrossesTheCutOffMakesTheNextPassWhole()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"fresh"_s), helper(u"ageing"_s, u"TEAM"_s, 2'592'000 - 12)});
        f.pass();
        f.pass();
        QCOMPARE(f.store->discoveredProcesses().size(), 2);
        f.pass();
        QCOMPARE(f.store->discoveredProcesses().size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestDiscoveryChanges)
#include "tst_discovery_changes.moc"
