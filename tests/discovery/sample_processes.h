#pragma once

#include "inspection/discovered_network_process.h"

namespace zorvane::tests
{

inline inspection::DiscoveredNetworkProcess sampleProcess(const QString &signingIdentifier,
    const std::optional<QString> &team = QStringLiteral("TEAM"),
    inspection::ReferenceSeconds lastSeenAt = 800'000'000)
{
    inspection::DiscoveredNetworkProcess process;
    process.signingIdentifier = signingIdentifier;
    process.teamIdentifier = team;
    process.firstSeenAt = lastSeenAt - 60;
    process.lastSeenAt = lastSeenAt;
    process.connectionCount = 1;
    return process;
}

} // namespace zorvane::tests
