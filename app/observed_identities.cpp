#include "app/observed_identities.h"

#include "inspection/process_matching.h"

namespace zorvane::app
{

using records::BlockedApplication;
using records::CodeIdentity;

namespace
{

/** The identities that an application takes in from processes of its own. */
QList<CodeIdentity> candidates(
    const QList<inspection::DiscoveredNetworkProcess> &processes, const QList<qsizetype> &owned)
{
    QList<CodeIdentity> result;
    for (const qsizetype position : owned) {
        const CodeIdentity identity = inspection::ownIdentity(processes.at(position));
        if (identity.teamIdentifier && !records::isInterpreterName(identity.signingIdentifier))
            result.append(identity);
    }
    return result;
}

} // namespace

std::optional<QList<BlockedApplication>> mergingObservedProcesses(
    const QList<BlockedApplication> &applications,
    const QList<inspection::DiscoveredNetworkProcess> &processes,
    const QList<QList<qsizetype>> &owned)
{
    QList<BlockedApplication> result = applications;
    bool changed = false;
    for (qsizetype i = 0; i < applications.size(); ++i) {
        // Also without candidates: a record of an older form is brought to the present one.
        const auto merged = records::mergingObservedIdentities(
            applications.at(i), candidates(processes, owned.at(i)));
        if (merged == applications.at(i))
            continue;
        result[i] = merged;
        changed = true;
    }
    return changed ? std::optional(result) : std::nullopt;
}

} // namespace zorvane::app
