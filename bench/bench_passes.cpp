// What a day of discovery passes with changing data leaves behind in memory.

#include "app/app_block_store.h"
#include "app/records/blocked_application_json.h"
#include "bench/report.h"
#include "tests/fakes/fake_platform.h"

#include <cstdlib>
#include <malloc.h>
#include <QCoreApplication>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;

namespace
{

constexpr int warmUp = 100;
constexpr int passesOfADay = 17'280;
constexpr int applicationCount = 20;
constexpr int processCount = 100;

QByteArray applications()
{
    QList<records::BlockedApplication> list;
    for (int i = 0; i < applicationCount; ++i) {
        records::BlockedApplication record;
        record.id = QUuid::createUuid();
        record.name = u"Application %1"_s.arg(i);
        record.bundleIdentifier = record.signingIdentifier = u"com.example.app%1"_s.arg(i);
        record.teamIdentifier = u"TEAM"_s;
        record.path = u"/Applications/Application %1.app"_s.arg(i);
        record.inspectionVersion = records::currentInspectionVersion;
        list.append(record);
    }
    return records::encodedApplications(list);
}

/** What the filter has recorded by this pass: every time another process, and later times. */
QByteArray observed(const QDateTime &now, int pass)
{
    QList<inspection::DiscoveredNetworkProcess> list;
    for (int i = 0; i < processCount; ++i) {
        inspection::DiscoveredNetworkProcess process;
        process.signingIdentifier = u"com.example.helper%1"_s.arg((pass + i) % 1000);
        process.executablePath = u"/Applications/Application %1.app/Contents/MacOS/helper%2"_s
                                     .arg(i % applicationCount)
                                     .arg((pass + i) % 1000);
        process.lastSeenAt = inspection::referenceSeconds(now) - i;
        process.firstSeenAt = process.lastSeenAt - 100;
        process.connectionCount = pass;
        list.append(process);
    }
    return inspection::encodedProcesses(list);
}

/** Megabytes in use on the heap, those that are free for reuse not counted. */
double usedMemory()
{
    const auto heap = ::mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / 1e6;
}

} // namespace

int main(int argc, char *argv[])
{
    // The allocator's caches of each thread fill slowly and would look like growth: without them.
    if (qEnvironmentVariableIsEmpty("GLIBC_TUNABLES")) {
        ::setenv("GLIBC_TUNABLES", "glibc.malloc.tcache_count=0", 1);
        ::execv("/proc/self/exe", argv);
        return EXIT_FAILURE;
    }
    const QCoreApplication application(argc, argv);
    tests::FakePlatform system;
    system.preferences.values.insert(u"blockedApplications"_s, applications());
    app::AppBlockStore store(system.ports);
    system.scheduler.settle();
    auto &shared = system.suites.domains[u"group.dev.kestrelworks.Zorvane"_s];
    double afterWarmUp = 0;
    for (int pass = 0; pass < passesOfADay; ++pass) {
        shared.insert(u"discoveredNetworkProcesses.v2"_s, observed(system.scheduler.now(), pass));
        system.scheduler.advance(5s);
        // The made-up system's own notes of what it was asked for are no part of the measure.
        system.suites.opened.clear();
        system.scheduler.forgetPriorities();
        if (pass + 1 == warmUp)
            afterWarmUp = usedMemory();
    }
    if (store.discoveredProcesses().size() != processCount)
        return EXIT_FAILURE;
    bench::report("memory after a day of passes, 17,280", "after the first hundred",
        {usedMemory(), afterWarmUp}, "MB", 1.1);
    return EXIT_SUCCESS;
}
