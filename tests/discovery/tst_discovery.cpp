#include "app/app_block_store.h"
#include "app/records/blocked_application_json.h"
#include "app/sample_applications.h"
#include "fakes/fake_platform.h"
#include "sample_processes.h"

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

namespace
{

const QString group = u"group.dev.kestrelworks.Zorvane"_s;
const QString recordsKey = u"discoveredNetworkProcesses.v2"_s;
const QString listKey = u"blockedApplications"_s;

struct Fixture {
    FakePlatform system;
    std::unique_ptr<AppBlockStore> store;

    explicit Fixture(const QList<BlockedApplication> &applications)
    {
        system.preferences.values.insert(listKey, records::encodedApplications(applications));
        system.preferences.values.insert(u"protectionRequested"_s, true);
    }

    void start(bool enabled = false)
    {
        system.filterManager.stored.enabled = enabled;
        store = std::make_unique<AppBlockStore>(system.ports);
        system.scheduler.settle();
        system.preferences.written.clear();
    }

    void observe(const QList<DiscoveredNetworkProcess> &processes)
    {
        observeBytes(inspection::encodedProcesses(processes));
    }

    void observeBytes(const QByteArray &bytes)
    {
        system.suites.domains[group].insert(recordsKey, bytes);
    }

    void pass() { system.scheduler.advance(5s); }

    [[nodiscard]] int listSaves() const { return int(system.preferences.written.count(listKey)); }

    [[nodiscard]] QList<CodeIdentity> auxiliary() const
    {
        return store->applications().constFirst().auxiliaryCodeIdentities.value();
    }
};

BlockedApplication tool()
{
    return sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
}

/** A process inside the tool's bundle, seen a moment ago. */
DiscoveredNetworkProcess helper(const QString &identifier,
    const std::optional<QString> &team = u"TEAM"_s, double secondsAgo = 60)
{
    const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);
    auto process = sampleProcess(identifier, team, inspection::referenceSeconds(now) - secondsAgo);
    process.executablePath = tool().path + u"/Contents/MacOS/"_s + identifier;
    return process;
}

} // namespace

class TestDiscovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstPassRunsAfterFiveSeconds()
    {
        Fixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.system.scheduler.advance(4999ms);
        QVERIFY(f.store->discoveredProcesses().isEmpty());
        f.system.scheduler.advance(1ms);
        QCOMPARE(f.store->discoveredProcesses().size(), 1);
    }

    void foldsAnObservedIdentityIntoItsRecord()
    {
        Fixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s, u" TEAM "_s)});
        f.pass();
        QCOMPARE(f.auxiliary(), QList({CodeIdentity{u"helper"_s, u"TEAM"_s}}));
        QCOMPARE(f.listSaves(), 1);
    }

    void handsTheRulesOverWhenTheFilterIsOn()
    {
        Fixture f({tool()});
        f.start(true);
        f.system.systemExtensions.delegate()->requestDidFinish(
            platform::ActivationResult::Completed);
        f.system.scheduler.settle();
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
        Fixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        QCOMPARE(f.listSaves(), 1);
        QCOMPARE(f.system.filterManager.saves, 0);
    }

    void aPassThatFindsNoChangeWritesAndPushesNothing()
    {
        Fixture f({tool()});
        f.start(true);
        f.observe({helper(u"helper"_s)});
        f.pass();
        const int filterSaves = f.system.filterManager.saves;
        f.system.preferences.written.clear();
        const QSignalSpy list(f.store.get(), &AppBlockStore::applicationsChanged);
        const QSignalSpy processes(f.store.get(), &AppBlockStore::discoveredProcessesChanged);
        f.pass();
        f.pass();
        f.pass();
        QVERIFY(f.system.preferences.written.isEmpty());
        QCOMPARE(f.system.filterManager.saves, filterSaves);
        QCOMPARE(list.size(), 0);
        QCOMPARE(processes.size(), 0);
    }

    void aStoredListWithARepeatedIdShowsBothRecords()
    {
        auto other = sampleApplication(u"Other"_s, u"com.example.Other"_s);
        other.id = tool().id;
        Fixture f({tool(), other});
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
        Fixture f({tool()});
        f.start();
        f.store->refreshDiscoveredProcesses();
        f.store->refreshDiscoveredProcesses();
        QCOMPARE(f.system.scheduler.waitingBackgroundJobs(), 1);
        f.system.scheduler.settle();
        f.store->refreshDiscoveredProcesses();
        QCOMPARE(f.system.scheduler.waitingBackgroundJobs(), 1);
    }

    void processesWithoutTeamAndInterpretersNeverEnterARecord()
    {
        Fixture f({tool()});
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
        Fixture f({tool(), other});
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
        Fixture f({old});
        f.start();
        f.pass();
        QVERIFY(!f.store->applications().constFirst().auxiliarySigningIdentifiers);
        QCOMPARE(f.listSaves(), 1);
    }

    void corruptDataPublishesAnEmptyListAndChangesNoRecord()
    {
        Fixture f({tool()});
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
        Fixture f({});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        QCOMPARE(f.store->discoveredProcesses().size(), 1);
        QCOMPARE(f.listSaves(), 0);
    }

    void unchangedDataIsNotDecodedAgain()
    {
        // Seen by what decoding would publish: bytes that are the same object to the reader.
        Fixture f({tool()});
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
        Fixture f({});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        f.store->add(tool());
        f.pass();
        QCOMPARE(f.auxiliary().size(), 1);
    }

    void aLoadedListMakesTheNextPassWhole()
    {
        Fixture f({tool()});
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.observe({helper(u"helper"_s)});
        f.store->refreshDiscoveredProcesses();
        f.system.scheduler.settle();
        f.pass();
        QCOMPARE(f.auxiliary().size(), 1);
    }

    void aReinspectedApplicationMakesTheNextPassWhole()
    {
        Fixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s)});
        f.pass();
        f.pass();
        auto stale = sampleApplication(u"Other"_s, u"com.example.Other"_s);
        stale.inspectionVersion = 4;
        f.system.addBundle(stale.path, u"com.example.Other"_s, u"TEAM"_s, u"Other"_s);
        f.store->add(stale);
        f.pass();
        f.store->reinspectStaleApplications();
        f.system.scheduler.settle();
        auto process = helper(u"late"_s);
        process.executablePath = stale.path + u"/late"_s;
        f.observe({helper(u"helper"_s), process});
        f.pass();
        QCOMPARE(f.store->applications().constFirst().auxiliaryCodeIdentities->size(), 1);
    }

    void aMergedApplicationMakesTheNextPassWhole()
    {
        // The identity that the first pass takes in makes a process outside the bundle match.
        auto outside = helper(u"outside"_s);
        outside.executablePath = u"/tmp/outside"_s;
        outside.sourceApplicationIdentifier = u"helper"_s;
        outside.sourceApplicationTeamIdentifier = u"TEAM"_s;
        Fixture f({tool()});
        f.start();
        f.observe({helper(u"helper"_s), outside});
        f.pass();
        QCOMPARE(f.auxiliary().size(), 1);
        f.pass();
        QCOMPARE(f.auxiliary().size(), 2);
    }

    void aRecordThatCrossesTheCutOffMakesTheNextPassWhole()
    {
        Fixture f({tool()});
        f.start();
        f.observe({helper(u"fresh"_s), helper(u"ageing"_s, u"TEAM"_s, 2'592'000 - 12)});
        f.pass();
        f.pass();
        QCOMPARE(f.store->discoveredProcesses().size(), 2);
        f.pass();
        QCOMPARE(f.store->discoveredProcesses().size(), 1);
    }

    void aListThatChangesDuringAPassIsNotOverwritten()
    {
        Fixture f({tool()});
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
        Fixture f({tool()});
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
