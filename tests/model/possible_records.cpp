#include "model/possible_records.h"

#include <algorithm>

namespace zorvane::tests
{

using records::BlockedApplication;
using records::CodeIdentity;

void PossibleRecords::couldBeInspected(BlockedApplication record)
{
    record.id = {};
    if (!m_inspected.contains(record))
        m_inspected.append(record);
}

void PossibleRecords::wasObserved(const QString &path, const CodeIdentity &identity)
{
    m_observed.insert({path, identity});
}

bool PossibleRecords::isInspected(BlockedApplication record) const
{
    record.id = {};
    return m_inspected.contains(record);
}

bool PossibleRecords::isMerged(
    const BlockedApplication &old, const BlockedApplication &record) const
{
    const auto known = old.auxiliaryCodeIdentities.value_or(QList<CodeIdentity>());
    auto added = record.auxiliaryCodeIdentities.value_or(QList<CodeIdentity>());
    added.removeIf([&](const CodeIdentity &identity) { return known.contains(identity); });
    return record == records::mergingObservedIdentities(old, added)
        && std::ranges::all_of(added, [&](const CodeIdentity &identity) {
               return identity.teamIdentifier && m_observed.contains({old.path, identity});
           });
}

} // namespace zorvane::tests
