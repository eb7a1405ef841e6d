#pragma once

#include "inspection/discovered_network_process.h"
#include "platform/simulated/filter_configuration.h"

/**
 * @file
 * What a filter extension does with a connection: it decides by the configuration, and records the
 * process for the application. Pure functions.
 */
namespace zorvane::tools
{

struct Verdict {
    bool blocked = false;
    /** For the user: the key or the path that decided, or why nothing did. */
    QString reason;
};

/** What an extension that reads @p configuration decides about a connection of @p process. */
[[nodiscard]] Verdict verdict(const platform::simulated::FilterConfiguration &configuration,
    const inspection::DiscoveredNetworkProcess &process);

/**
 * @p records with one more connection of @p process, at its last time: counted where the same
 * process is recorded already, else a record of its own.
 */
[[nodiscard]] QList<inspection::DiscoveredNetworkProcess> withConnection(
    QList<inspection::DiscoveredNetworkProcess> records,
    const inspection::DiscoveredNetworkProcess &process);

} // namespace zorvane::tools
