// A discovery pass over many processes and applications, against the plain rule applied to each
// pair and against the JSON library's bare parse.

#include "app/observed_identities.h"
#include "app/records/paths.h"
#include "inspection/discovered_processes.h"
#include "inspection/process_matching.h"
#include "report.h"

#include <QRandomGenerator>
#include <simdjson.h>

using namespace Qt::StringLiterals;
using namespace zorvane;
using inspection::DiscoveredNetworkProcess;
using records::BlockedApplication;

namespace
{

constexpr int applicationCount = 500;
constexpr int identitiesEach = 20;
constexpr int processCount = 5000;
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
        process.signingIdentifier = identifier(owner, random.bounded(identitiesEach));
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
            const auto own = inspection::ownIdentity(process);
            const auto source = inspection::sourceApplicationIdentity(process);
            const QString folder = records::standardizedPath(application.path);
            const QString path = records::standardizedPath(*process.executablePath);
            const bool belongs = identities.contains(own)
                || (source && identities.contains(*source)) || path == folder
                || path.startsWith(folder + u'/');
            if (belongs && own.teamIdentifier && !records::isInterpreterName(own.signingIdentifier))
                candidates.append(own);
        }
        if (records::mergingObservedIdentities(application, candidates) != application)
            ++changed;
    }
    return changed;
}

/** What is left to a pass that finds the same bytes, list and time as the one before. */
bool unchangedPass(const QByteArray &bytes, const QByteArray &lastBytes,
    const QList<BlockedApplication> &list, const QList<BlockedApplication> &lastList,
    const inspection::RecentProcesses &recent)
{
    return bytes == lastBytes && list == lastList && recent.holdAt(now);
}

} // namespace

int main()
{
    const auto list = applications();
    const auto observed = processes();
    const QByteArray bytes = inspection::encodedProcesses(observed);
    const auto recent = inspection::recentProcesses(bytes, now);

    const double plain = bench::median(3, [&] { bench::keep(plainPass(list, observed)); });
    const double indexed
        = bench::median(21, [&] { bench::keep(app::mergingObservedProcesses(list, observed)); });
    bench::report(
        u"discovery: matching and merging"_s, u"plain rule, pair by pair"_s, indexed / plain, 0.02);

    // On the main thread a pass compares the list with the one it read, and hands results over.
    const auto copy = list;
    auto published = recent.processes;
    const double mainShare = bench::median(101, [&] {
        bench::keep(copy != list);
        published = recent.processes;
        bench::keep(published.size());
    });
    bench::report(u"discovery: the main thread's share"_s, u"matching and merging"_s,
        mainShare / indexed, 1.0 / 3);

    const double parse = bench::median(21, [&] {
        simdjson::dom::parser parser;
        simdjson::dom::element root;
        bench::keep(parser.parse(bytes.constData(), size_t(bytes.size())).get(root));
    });
    const double decode
        = bench::median(21, [&] { bench::keep(inspection::recentProcesses(bytes, now)); });
    bench::report(
        u"discovery: reading and decoding"_s, u"the library's bare parse"_s, decode / parse, 1.5);

    const QByteArray sameBytes(bytes.constData(), bytes.size());
    const double unchanged = bench::median(
        101, [&] { bench::keep(unchangedPass(sameBytes, bytes, copy, list, recent)); });
    bench::report(u"discovery: a pass with nothing changed"_s, u"plain rule, pair by pair"_s,
        unchanged / plain, 0.002);
    return 0;
}
