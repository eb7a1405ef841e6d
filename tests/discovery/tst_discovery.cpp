#include "discovery_fixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
using namespace zorvane::tests;
using app::AppBlockStore;
using inspection::DiscoveredNetworkProcess;
using records::BlockedApplication;
using records::CodeIdentity;

class TestDiscovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstPassRunsAfterFiveSeconds()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.system.scheduler.advance(4999ms);
        QVERIFY(f.store->discoveredProcesses().isEmpty());
        f.system.scheduler.advance(1ms);
        QCOMPARE(f.store->discoveredProcesses().size(), 1);
    }

    void foldsAnObservedIdentityIntoItsRecord()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s, u" TEAM "_s)});
        f.pass();
        QCOMPARE(f.auxiliary(), QList({CodeIdentity{u"helper"_s, u"TEAM"_s}}));
        QCOMPARE(f.listSaves(), 1);
    }

    void handsTheRulesOverWhenTheFilterIsOn()
    {
        DiscoveryFixture f({tool()});
        f.start(true);
        f.completeActivation();
        const int saves = f.system.filterManager.saves;
        f.observe({helper(u"helper"_s)});
        f.pass();
        QCOMPARE(f.system.filterManager.saves, saves + 1);
        QVERIFY(f.system.filterManager.stored.provider->vendorConfiguration
                    .at(u"blockedCodeIdentities"_s)
                    .contains(records::identityKey({u"helper"_s, u"TEAM"_s})));
    }

    void savesButHandsNothingOverWhenTheFilterIsOff()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        QCOMPARE(f.listSaves(), 1);
        QCOMPARE(f.system.filterManager.saves, 0);
    }

    void aPassThatFindsNoChangeWritesAndPushesNothing()
    {
        DiscoveryFixture f({tool()});
        f.start(true);
        f.completeActivation();
        auto process = helper(u"helper"_s);
        f.observe({process});
        f.pass();
        QCOMPARE(f.auxiliary().size(), 1);
        const int filterSaves = f.system.filterManager.saves;
        f.system.preferences.written.clear();
        const QSignalSpy list(f.store.get(), &AppBlockStore::applicationsChanged);
        for (int i = 0; i < 3; ++i) {
            // Other bytes each time, so that the pass cannot end early.
            ++process.connectionCount;
            f.observe({process});
            f.pass();
            QCOMPARE(f.store->discoveredProcesses(), QList{process});
        }
        QVERIFY(f.system.preferences.written.isEmpty());
        QCOMPARE(f.system.filterManager.saves, filterSaves);
        QCOMPARE(list.size(), 0);
    }

    void aPassOverTheSameBytesAnnouncesNothing()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        const QSignalSpy processes(f.store.get(), &AppBlockStore::discoveredProcessesChanged);
        f.pass();
        f.pass();
        QCOMPARE(processes.size(), 0);
    }

    void aPassRunsAtUtilityPriority()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.system.scheduler.forgetPriorities();
        f.pass();
        QCOMPARE(f.system.scheduler.priorities(), QList{platform::Priority::Utility});
    }

    void aStoredListWithARepeatedIdShowsBothRecords()
    {
        auto other = sampleApplication(u"Other"_s, u"com.example.Other"_s);
        other.id = tool().id;
        DiscoveryFixture f({tool(), other});
        f.start();
        const auto names = [&] {
            QStringList result;
            for (const auto &components : f.store->networkComponents(f.store->applications()))
                result.append(components.constFirst().name);
            return result;
        };
        QCOMPARE(names(), QStringList({u"Tool"_s, u"Other"_s}));
        f.pass();
        QCOMPARE(names(), QStringList({u"Tool"_s, u"Other"_s}));
    }

    void aTickDuringAPassIsDroppedAndTheNextOneRuns()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.system.scheduler.advance(5s, [] {});
        const auto reading = f.system.scheduler.takeBackgroundJob(0);
        f.pass();
        QCOMPARE(f.system.suites.opened.size(), 0);
        reading();
        f.system.scheduler.settle();
        QCOMPARE(f.system.suites.opened.size(), 1);
        f.pass();
        QCOMPARE(f.system.suites.opened.size(), 2);
    }

    void processesWithoutTeamAndInterpretersNeverEnterARecord()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"teamless"_s, std::nullopt), helper(u"blank"_s, u"  "_s),
            helper(u"python3"_s), helper(u"Node"_s)});
        f.pass();
        QCOMPARE(f.store->discoveredProcesses().size(), 4);
        QCOMPARE(f.auxiliary(), QList<CodeIdentity>());
        QCOMPARE(f.listSaves(), 0);
    }

    void aSharedHelperEntersBothRecords()
    {
        auto other = sampleApplication(u"Other"_s, u"com.example.Other"_s);
        DiscoveryFixture f({tool(), other});
        f.start();
        auto process = helper(u"helper"_s);
        process.sourceApplicationIdentifier = u"com.example.Other"_s;
        process.sourceApplicationTeamIdentifier = u"TEAM"_s;
        f.observe({process});
        f.pass();
        for (const BlockedApplication &application : f.store->applications())
            QCOMPARE(application.auxiliaryCodeIdentities->size(), 1);
    }

    void aRecordOfAnOlderFormIsRewrittenWithoutAnyProcess()
    {
        auto old = tool();
        old.auxiliarySigningIdentifiers = QStringList{u"helper"_s};
        DiscoveryFixture f({old});
        f.start();
        f.pass();
        QVERIFY(!f.store->applications().constFirst().auxiliarySigningIdentifiers);
        QCOMPARE(f.listSaves(), 1);
    }

    void corruptDataPublishesAnEmptyListAndChangesNoRecord()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        const auto before = f.store->applications();
        f.observeBytes("[{\"half");
        f.pass();
        QVERIFY(f.store->discoveredProcesses().isEmpty());
        QCOMPARE(f.store->applications(), before);
        QVERIFY(!f.store->alertMessage());
    }

    void withoutApplicationsProcessesAreStillPublished()
    {
        DiscoveryFixture f({});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        QCOMPARE(f.store->discoveredProcesses().size(), 1);
        QCOMPARE(f.listSaves(), 0);
    }

    void aListThatChangesDuringAPassIsNotOverwritten()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.store->refreshDiscoveredProcesses();
        f.system.scheduler.runBackground();
        f.store->add(sampleApplication(u"Added"_s, u"com.example.Added"_s));
        f.system.scheduler.settle();
        QCOMPARE(f.store->applications().size(), 2);
        QCOMPARE(f.store->applications().constLast().auxiliaryCodeIdentities->size(), 1);
    }

    void aPassThatEndsAfterTheStoreIsGoneIsDropped()
    {
        DiscoveryFixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.store->refreshDiscoveredProcesses();
        f.system.scheduler.runBackground();
        f.store.reset();
        f.system.scheduler.settle();
        f.system.scheduler.advance(20s);
        QVERIFY(f.system.preferences.written.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestDiscovery)
#include "tst_discovery.moc"
