#pragma once

#include "app/sample_applications.h"
#include "app/store_fixture.h"
#include "discovery/sample_processes.h"
#include "model/observed_processes.h"

#include <algorithm>
#include <QStringList>
#include <utility>

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

/** As a person sorts the names of the models, told without the rules of any language: letter case
 * does not count, an accent only between names that are equal without, and a number is its digits.
 */
inline void sortByName(Applications &list)
{
    std::ranges::stable_sort(list, {}, [](const records::BlockedApplication &application) {
        const QString name = application.name.toLower();
        return std::pair(QString(name).replace(u'é', u'e'), name);
    });
}

/** Some come from an older version, in several forms. */
inline records::BlockedApplication modelledApplication(int number)
{
    auto application = sampleApplication(modelledName(number), modelledIdentifier(number));
    application.id = QUuid::createUuidV5(QUuid(), QString::number(number));
    application.path = modelledPath(number);
    switch (number / modelledApplications % 8) {
    case 0:
        application.inspectionVersion = 4;
        break;
    case 1:
        application.inspectionVersion.reset();
        break;
    case 2:
        application.auxiliaryCodeIdentities.reset();
        break;
    case 3:
        application.auxiliarySigningIdentifiers = {QStringLiteral("com.example.old")};
        break;
    case 4:
        application.auxiliaryCodeIdentities = {{QStringLiteral("Python3"), QStringLiteral("TEAM")},
            {QStringLiteral("com.example.helper1"), {}},
            {QStringLiteral("com.example.helper1"), QStringLiteral("TEAM")}};
        break;
    case 5:
        application.teamIdentifier = QStringLiteral(" TEAM ");
        break;
    default:
        break;
    }
    return application;
}

/** A list as an earlier run may have left it, of records of several forms; sometimes none. */
inline void storeSomething(FakePreferences &preferences, int number)
{
    if (number % 4 == 0)
        return;
    Applications list;
    for (int i = 0; i < modelledApplications - 1; ++i) {
        if ((number >> i) % 2 != 0)
            list.append(modelledApplication(i + modelledApplications * (number / 128 + 3 * i)));
    }
    sortByName(list);
    preferences.values.insert(listKey, records::encodedApplications(list));
}

/** A helper, an interpreter, an application itself, or, seldom, a part of this product. */
inline QString modelledSigner(int number)
{
    if (number % 64 == 9)
        return QStringLiteral("dev.kestrelworks.Zorvane.probe");
    if (number % 8 == 1)
        return QStringLiteral("Python3");
    if (number % 11 == 10)
        return modelledIdentifier(number / 11);
    return QStringLiteral("com.example.helper%1").arg(number % 7);
}

/** A process seen at most 60 days ago; at 30 days, some seconds before it is too old. */
inline inspection::DiscoveredNetworkProcess modelledProcess(int number, const QDateTime &now)
{
    const auto seen = now.addDays(-(number % 60)).addSecs(number % 40);
    auto process
        = sampleProcess(modelledSigner(number), std::nullopt, inspection::referenceSeconds(seen));
    if (number % 3 != 0)
        process.teamIdentifier
            = number % 3 == 1 ? QStringLiteral(" TEAM\n") : QStringLiteral("TEAM");
    if (number % 5 == 0) {
        process.sourceApplicationIdentifier = modelledIdentifier(number / 5);
        process.sourceApplicationTeamIdentifier = QStringLiteral("TEAM");
    }
    // Beside the bundle as well as in it.
    if (number % 4 != 3)
        process.executablePath = modelledPath(number / 4)
            + (number % 4 == 2 ? QStringLiteral("Extra/tool") : QStringLiteral("/Contents/tool"));
    return process;
}

/** Lets the filter see these. */
inline void observe(FakePlatform &system, ObservedProcesses &observed, const Processes &processes)
{
    observed.stored(processes);
    system.suites.domains[QStringLiteral("group.dev.kestrelworks.Zorvane")].insert(
        QStringLiteral("discoveredNetworkProcesses.v2"), inspection::encodedProcesses(processes));
}

/** Lets it see up to four; or leaves bytes that tell of none. */
inline void observe(FakePlatform &system, ObservedProcesses &observed, int number)
{
    Processes processes;
    for (int i = 0; i < number % 5 && number % 16 != 0; ++i)
        processes.append(modelledProcess(number / 16 + 3 * i, system.scheduler.now()));
    observe(system, observed, processes);
    if (number % 16 == 0)
        system.suites.domains[QStringLiteral("group.dev.kestrelworks.Zorvane")].insert(
            QStringLiteral("discoveredNetworkProcesses.v2"), QByteArray("[{"));
}

} // namespace zorvane::tests
