// A discovery pass over many processes and applications, against the plain rule applied to each
// pair and against the JSON library's bare parse.

#include "app/app_block_store.h"
#include "app/observed_identities.h"
#include "app/records/blocked_application_json.h"
#include "bench/report.h"
#include "inspection/discovered_processes.h"
#include "inspection/process_matching.h"
#include "tests/discovery/plain_rule.h"
#include "tests/fakes/fake_platform.h"
#include "ui/blocked_apps_model.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <simdjson.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
using inspection::DiscoveredNetworkProcess;
using records::BlockedApplication;

namespace
{

constexpr int applicationCount = 500;
constexpr int identitiesEach = 20;
constexpr int processCount = 5000;
constexpr int rounds = 5;
constexpr inspection::ReferenceSeconds now = 800'000'000;

QString identifier(int application, int helper)
{
    return u"com.vendor%1.application.helper%2"_s.arg(application).arg(helper);
}

QList<BlockedApplication> applications()
{
    QList<BlockedApplication> result;
    for (int i = 0; i < applicationCount; ++i) {
        BlockedApplication application;
        application.id = QUuid::createUuid();
        application.name = u"Application %1"_s.arg(i);
        application.bundleIdentifier = application.signingIdentifier = identifier(i, 0);
        application.teamIdentifier = u"TEAM%1"_s.arg(i);
        application.path = u"/Applications/Folder %1/Application %2.app"_s.arg(i % 7).arg(i);
        application.iconData = QByteArray(10'000, 'x');
        QList<records::CodeIdentity> helpers;
        for (int helper = 1; helper < identitiesEach; ++helper)
            helpers.append({identifier(i, helper), application.teamIdentifier});
        application.auxiliaryCodeIdentities = helpers;
        result.append(records::mergingObservedIdentities(application, {}));
    }
    return result;
}

QList<DiscoveredNetworkProcess> processes()
{
    QRandomGenerator random(1);
    QList<DiscoveredNetworkProcess> result;
    for (int i = 0; i < processCount; ++i) {
        const int owner = random.bounded(applicationCount * 2); // half of them belong to nobody
        DiscoveredNetworkProcess process;
        // Some were not there when the application was inspected: its record takes them in.
        process.signingIdentifier = identifier(owner, random.bounded(identitiesEach + 2));
        process.teamIdentifier = u"TEAM%1"_s.arg(owner);
        process.executablePath
            = u"/Applications/Folder %1/Application %2.app/Contents/MacOS/Helper %3"_s
                  .arg(owner % 7)
                  .arg(owner)
                  .arg(i);
        process.lastSeenAt = now - random.bounded(1'000'000);
        process.firstSeenAt = process.lastSeenAt - 100;
        process.connectionCount = i;
        result.append(process);
    }
    return result;
}

/** The rule as it reads, for every pair; what every application takes in is merged afterwards. */
qsizetype plainPass(
    const QList<BlockedApplication> &list, const QList<DiscoveredNetworkProcess> &observed)
{
    qsizetype changed = 0;
    for (const BlockedApplication &application : list) {
        const auto identities = records::allCodeIdentities(application);
        QList<records::CodeIdentity> candidates;
        for (const DiscoveredNetworkProcess &process : observed) {
            if (!tests::belongsByThePlainRule(process, identities, application.path))
                continue;
            const auto own = inspection::ownIdentity(process);
            if (own.teamIdentifier && !records::isInterpreterName(own.signingIdentifier))
                candidates.append(own);
        }
        if (records::mergingObservedIdentities(application, candidates) != application)
            ++changed;
    }
    return changed;
}

/** The store with its rows, and passes over what the filter has recorded. */
class Store
{
public:
    /** What one pass took, in milliseconds. */
    struct Time {
        double onMainThread;
        double inBackground;
    };

    Store(const QList<BlockedApplication> &list, QByteArrayView observed)
        : m_observed(observed)
    {
        m_system.preferences.values.insert(
            u"blockedApplications"_s, records::encodedApplications(list));
        m_store.emplace(m_system.ports);
        m_rows.emplace(*m_store);
        m_system.scheduler.settle();
        QObject::connect(
            &*m_store, &app::AppBlockStore::applicationsChanged, &*m_rows, [this] { ++m_changes; });
    }

    Time pass()
    {
        // Bytes of its own, as those that are read from a disk are.
        m_system.suites.domains[u"group.dev.kestrelworks.Zorvane"_s].insert(
            QString(inspection::discoveredProcessesKey), m_observed.toByteArray());
        auto &scheduler = m_system.scheduler;
        double inBackground = 0;
        const double whole = bench::milliseconds([&] {
            scheduler.advance(5s, [&] {
                while (scheduler.waitingBackgroundJobs() + scheduler.postedJobs() > 0) {
                    inBackground += bench::milliseconds([&] { scheduler.runBackground(); });
                    scheduler.runPosted();
                }
            });
        });
        if (m_store->discoveredProcesses().size() != processCount)
            qFatal("the pass did not read what was recorded");
        return {whole - inBackground, inBackground};
    }

    /** How often the list became another. */
    [[nodiscard]] int changes() const { return m_changes; }

private:
    QByteArrayView m_observed;
    tests::FakePlatform m_system;
    std::optional<app::AppBlockStore> m_store;
    std::optional<ui::BlockedAppsModel> m_rows;
    int m_changes = 0;
};

/** The first pass: records take in identities, and the rows follow. */
double mainThreadOfAMergingPass(const QList<BlockedApplication> &list, QByteArrayView observed)
{
    Store store(list, observed);
    const auto time = store.pass();
    if (store.changes() != 1)
        qFatal("the pass merged nothing");
    return time.onMainThread;
}

/** A pass that finds all as it was, whole. */
double unchangedPass(Store &store)
{
    const int changes = store.changes();
    const auto time = store.pass();
    if (store.changes() != changes)
        qFatal("the pass changed something");
    return time.onMainThread + time.inBackground;
}

void reportReading(const QByteArray &bytes)
{
    const auto parse = [&] {
        simdjson::dom::parser parser;
        simdjson::dom::element root;
        bench::keep(parser.parse(bytes.constData(), size_t(bytes.size())).get(root));
    };
    const auto decode = [&] { bench::keep(inspection::recentProcesses(bytes, now)); };
    bench::report("discovery: read and decode", "the library's bare parse",
        bench::compare(21, decode, parse), "ms", 1.5);
}

void reportPasses(const QList<BlockedApplication> &list, QByteArrayView bytes,
    const QList<DiscoveredNetworkProcess> &observed)
{
    const auto plain = [&] { bench::keep(plainPass(list, observed)); };
    const auto indexed = [&] {
        const auto owned = inspection::processesOfEach(list, observed);
        bench::keep(app::mergingObservedProcesses(list, observed, owned));
    };
    bench::report("discovery: match and merge", "plain rule, pair by pair",
        bench::compare(rounds, indexed, plain), "ms", 0.02);

    std::vector<double> mainThread;
    std::vector<double> unchanged;
    std::vector<double> matching;
    std::vector<double> pairByPair;
    Store store(list, bytes);
    // One that merges, and one that sees what came of it.
    store.pass();
    store.pass();
    for (int round = 0; round < rounds; ++round) {
        mainThread.push_back(mainThreadOfAMergingPass(list, bytes));
        matching.push_back(bench::milliseconds(indexed));
        unchanged.push_back(unchangedPass(store));
        pairByPair.push_back(bench::milliseconds(plain));
    }
    bench::report("discovery: on the main thread", "match and merge",
        {bench::median(mainThread), bench::median(matching)}, "ms", 0.333);
    bench::report("discovery: nothing changed", "plain rule, pair by pair",
        {bench::median(unchanged), bench::median(pairByPair)}, "ms", 0.002);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const auto list = applications();
    const auto observed = processes();
    const QByteArray bytes = inspection::encodedProcesses(observed);
    // First, while the heap is as a program's that does nothing else.
    reportReading(bytes);
    reportPasses(list, bytes, observed);
    return EXIT_SUCCESS;
}
