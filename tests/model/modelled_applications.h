#pragma once

#include "app/records/collation.h"
#include "app/sample_applications.h"
#include "app/store_fixture.h"
#include "discovery/sample_processes.h"
#include "model/possible_records.h"

#include <algorithm>
#include <QStringList>

/** @file The applications, bundles and processes that a modelled user has. */
namespace zorvane::tests
{

/** The last but one is of this product, the last signs as the first does. */
inline constexpr int modelledApplications = 8;

inline QString modelledPath(int number)
{
    return QStringLiteral("/Applications/P%1.app").arg(number % modelledApplications);
}

inline QString modelledIdentifier(int number)
{
    const int position = number % modelledApplications;
    if (position == modelledApplications - 2)
        return QStringLiteral("dev.kestrelworks.Zorvane.tool");
    return QStringLiteral("com.example.p%1").arg(position % (modelledApplications - 1));
}

/** Names that are equal, or equal but for case or an accent, among others. */
inline QString modelledName(int number)
{
    static const QStringList names{QStringLiteral("alpha"), QStringLiteral("Beta"),
        QStringLiteral("beta"), QStringLiteral("Éclair"), QStringLiteral("eclair"),
        QStringLiteral("10"), QStringLiteral("9"), QStringLiteral("alpha"), QString()};
    return names.at(number % names.size());
}

/** With @p number's odd multiples of the number of applications: a record of an older version. */
inline records::BlockedApplication modelledApplication(int number)
{
    auto application = sampleApplication(modelledName(number), modelledIdentifier(number));
    application.id = QUuid::createUuid();
    application.path = modelledPath(number);
    if (number / modelledApplications % 2 != 0)
        application.inspectionVersion = 4;
    return application;
}

/** A list as an earlier run may have left it; sometimes none, sometimes a damaged one. */
inline void storeSomething(FakePreferences &preferences, int number)
{
    if (number % 8 == 0)
        return;
    QList<records::BlockedApplication> list;
    for (int i = 0; i < modelledApplications - 1; ++i) {
        if ((number >> i) % 2 != 0)
            list.append(modelledApplication(i + number / 256 * modelledApplications));
    }
    std::ranges::stable_sort(list, records::NameOrder(), &records::BlockedApplication::name);
    const QByteArray bytes = records::encodedApplications(list);
    preferences.values.insert(listKey, number % 8 == 1 ? bytes.chopped(2) : bytes);
}

/** Puts a bundle on the made-up disk, under a name that may be another than before, sometimes in
 * the place of another application's, or takes it away. */
inline void changeBundle(FakePlatform &system, PossibleRecords &possible, int number)
{
    const QString path = modelledPath(number);
    const int name = number / modelledApplications;
    if (name % 4 == 0) {
        system.bundles.information.remove(path);
        return;
    }
    const int occupant = name / 64 % 4 == 0 ? name : number;
    system.addBundle(
        path, modelledIdentifier(occupant), QStringLiteral("TEAM"), modelledName(name));
    const auto &ports = system.ports;
    const inspection::ApplicationInspector inspector(
        {*ports.bundles, *ports.signatures, *ports.walk, *ports.icons});
    const auto inspected = inspector.inspectApplication(QUrl::fromLocalFile(path), QUuid());
    possible.couldBeInspected(std::get<records::BlockedApplication>(inspected));
}

/** Up to four processes of the applications, seen at most 60 days ago. */
inline QList<inspection::DiscoveredNetworkProcess> modelledProcesses(
    int number, const QDateTime &now)
{
    QList<inspection::DiscoveredNetworkProcess> processes;
    for (int i = 0; i < number % 5; ++i) {
        const int each = number / 16 + 3 * i;
        const auto seen = inspection::referenceSeconds(now.addDays(-(each % 60)));
        auto process = sampleProcess(QStringLiteral("com.example.helper%1").arg(each % 7),
            each % 3 == 0 ? std::nullopt : std::optional(QStringLiteral("TEAM")), seen);
        process.executablePath
            = modelledPath(each) + QStringLiteral("/Contents/MacOS/helper%1").arg(each % 7);
        processes.append(process);
    }
    return processes;
}

/** Lets the filter see some; or stores bytes that tell of none. */
inline void observe(FakePlatform &system, PossibleRecords &possible, int number)
{
    QByteArray bytes = "[{";
    if (number % 16 != 0) {
        const auto processes = modelledProcesses(number, system.scheduler.now());
        for (const auto &process : processes)
            possible.wasObserved(process.executablePath->section(QStringLiteral("/Contents"), 0, 0),
                {process.signingIdentifier, process.teamIdentifier});
        bytes = inspection::encodedProcesses(processes);
    }
    system.suites.domains[QStringLiteral("group.dev.kestrelworks.Zorvane")].insert(
        QStringLiteral("discoveredNetworkProcesses.v2"), bytes);
}

} // namespace zorvane::tests
