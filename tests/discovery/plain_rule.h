#pragma once

#include "app/records/paths.h"
#include "inspection/discovered_network_process.h"

namespace zorvane::tests
{

/**
 * Whether @p process belongs to an application of these @p identities at @p path: the rule as it
 * reads, for one pair, without anything prepared.
 */
inline bool belongsByThePlainRule(const inspection::DiscoveredNetworkProcess &process,
    const QList<records::CodeIdentity> &identities, const QString &path)
{
    if (identities.contains(inspection::ownIdentity(process)))
        return true;
    const auto source = inspection::sourceApplicationIdentity(process);
    if (source && identities.contains(*source))
        return true;
    if (!process.executablePath)
        return false;
    const QString folder = records::standardizedPath(path);
    const QString executable = records::standardizedPath(*process.executablePath);
    return executable == folder || executable.startsWith(folder + u'/');
}

} // namespace zorvane::tests
