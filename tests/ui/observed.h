#pragma once

#include "fakes/fake_platform.h"
#include "inspection/discovered_network_process.h"

#include <QCoreApplication>

namespace zorvane::tests
{

/** A process of this identifier inside an application of /Applications, seen a minute ago. */
inline inspection::DiscoveredNetworkProcess observedProcess(FakePlatform &platform,
    const QString &application, const QString &identifier,
    const std::optional<QString> &team = QStringLiteral("TEAM123456"))
{
    inspection::DiscoveredNetworkProcess process;
    process.signingIdentifier = identifier;
    process.teamIdentifier = team;
    process.executablePath
        = QStringLiteral("/Applications/%1.app/Contents/MacOS/%2").arg(application, identifier);
    process.lastSeenAt = inspection::referenceSeconds(platform.scheduler.now()) - 60;
    process.firstSeenAt = process.lastSeenAt - 60;
    process.connectionCount = 1;
    return process;
}

/** Stores @p processes as the filter extension does, and lets the next pass run. */
inline void observe(
    FakePlatform &platform, const QList<inspection::DiscoveredNetworkProcess> &processes)
{
    platform.suites.domains[QStringLiteral("group.dev.kestrelworks.Zorvane")].insert(
        QStringLiteral("discoveredNetworkProcesses.v2"), inspection::encodedProcesses(processes));
    platform.scheduler.advance(std::chrono::seconds(5));
    QCoreApplication::processEvents();
}

} // namespace zorvane::tests
