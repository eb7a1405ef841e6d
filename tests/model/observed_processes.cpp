#include "model/observed_processes.h"

#include <algorithm>

namespace zorvane::tests
{

using inspection::DiscoveredNetworkProcess;
using inspection::ReferenceSeconds;

namespace
{

ReferenceSeconds cutOffAt(const QDateTime &now)
{
    constexpr ReferenceSeconds thirtyDays = 30.0 * 24 * 60 * 60;
    return inspection::referenceSeconds(now) - thirtyDays;
}

Processes seenSince(Processes processes, ReferenceSeconds cutOff)
{
    processes.removeIf([cutOff](const auto &process) { return process.lastSeenAt < cutOff; });
    std::ranges::stable_sort(
        processes, std::ranges::greater(), &DiscoveredNetworkProcess::lastSeenAt);
    return processes;
}

} // namespace

void ObservedProcesses::timeIs(const QDateTime &now)
{
    m_earliest = std::min(m_earliest, now);
    m_latest = std::max(m_latest, now);
}

void ObservedProcesses::wereRead(const QDateTime &now)
{
    timeIs(now);
    m_read = m_stored;
    m_readEarliest = m_earliest;
    m_readLatest = m_latest;
    m_earliest = now;
    m_latest = now;
    m_canBeMerged = true;
}

void ObservedProcesses::programStarted()
{
    m_read.reset();
    m_canBeMerged = false;
}

QList<Processes> ObservedProcesses::possiblyFound() const
{
    const Processes read = m_read.value_or(Processes());
    const ReferenceSeconds first = cutOffAt(m_readEarliest);
    const ReferenceSeconds last = cutOffAt(m_readLatest);
    QList<Processes> result{seenSince(read, first), seenSince(read, last)};
    for (const DiscoveredNetworkProcess &process : read) {
        if (process.lastSeenAt > first && process.lastSeenAt < last)
            result.append(seenSince(read, process.lastSeenAt));
    }
    return result;
}

Processes ObservedProcesses::recent(const QDateTime &now) const
{
    return seenSince(m_stored, cutOffAt(now));
}

} // namespace zorvane::tests
