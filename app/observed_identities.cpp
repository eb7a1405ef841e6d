#include "app/observed_identities.h"

#include "inspection/process_matching.h"

namespace zorvane::app
{

using records::BlockedApplication;
using records::CodeIdentity;

std::optional<QList<BlockedApplication>> mergingObservedProcesses(
    const QList<BlockedApplication> &applications,
    const QList<inspection::DiscoveredNetworkProcess> &processes)
{
    QList<QList<CodeIdentity>> candidates(applications.size());
    const inspection::ProcessIndex index(applications);
    for (const auto &process : processes) {
        const CodeIdentity identity = inspection::ownIdentity(process);
        if (!identity.teamIdentifier || records::isInterpreterName(identity.signingIdentifier))
            continue;
        for (const qsizetype owner : index.owners(process))
            candidates[owner].append(identity);
    }
    QList<BlockedApplication> result = applications;
    bool changed = false;
    for (qsizetype i = 0; i < applications.size(); ++i) {
        // Also without candidates: a record of an older form is brought to the present one.
        const auto merged
            = records::mergingObservedIdentities(applications.at(i), candidates.at(i));
        if (merged == applications.at(i))
            continue;
        result[i] = merged;
        changed = true;
    }
    return changed ? std::optional(result) : std::nullopt;
}

} // namespace zorvane::app
