#pragma once

#include "app/records/blocked_application.h"
#include "inspection/discovered_network_process.h"

#include <optional>
#include <QList>

namespace zorvane::app
{

/**
 * The list with the identities of their observed processes merged into its records; nothing if that
 * changes no record. Only identities with a team that are no interpreters are taken in. @p owned
 * holds the positions of each application's processes. A pure function.
 */
[[nodiscard]] std::optional<QList<records::BlockedApplication>> mergingObservedProcesses(
    const QList<records::BlockedApplication> &applications,
    const QList<inspection::DiscoveredNetworkProcess> &processes,
    const QList<QList<qsizetype>> &owned);

} // namespace zorvane::app
