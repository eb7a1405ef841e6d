#include "inspection/discovered_processes.h"

#include <algorithm>
#include <mutex>

using namespace Qt::StringLiterals;

namespace zorvane::inspection
{

namespace
{

constexpr ReferenceSeconds thirtyDays = 2'592'000;

/** Serialises every reading and decoding of the shared domain in this process. */
std::mutex readLock; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

/** Sorts times and positions instead of the records, which are many times as large. */
QList<DiscoveredNetworkProcess> mostRecentFirst(QList<DiscoveredNetworkProcess> processes)
{
    std::vector<std::pair<ReferenceSeconds, qsizetype>> order;
    order.reserve(static_cast<size_t>(processes.size()));
    for (const DiscoveredNetworkProcess &process : processes)
        order.emplace_back(-process.lastSeenAt, static_cast<qsizetype>(order.size()));
    std::ranges::sort(order);
    QList<DiscoveredNetworkProcess> sorted;
    sorted.reserve(processes.size());
    for (const auto &[time, position] : order)
        sorted.append(std::move(processes[position]));
    return sorted;
}

} // namespace

bool RecentProcesses::holdAt(ReferenceSeconds now) const
{
    const ReferenceSeconds cutOff = now - thirtyDays;
    return (!newestDropped || *newestDropped < cutOff) && (!oldestKept || *oldestKept >= cutOff);
}

RecentProcesses recentProcesses(QByteArrayView text, ReferenceSeconds now)
{
    RecentProcesses recent;
    const ReferenceSeconds cutOff = now - thirtyDays;
    recent.processes = decodedProcesses(text).value_or(QList<DiscoveredNetworkProcess>());
    recent.processes.removeIf([&](const DiscoveredNetworkProcess &process) {
        const bool tooOld = process.lastSeenAt < cutOff;
        if (tooOld)
            recent.newestDropped
                = std::max(recent.newestDropped.value_or(process.lastSeenAt), process.lastSeenAt);
        else
            recent.oldestKept
                = std::min(recent.oldestKept.value_or(process.lastSeenAt), process.lastSeenAt);
        return tooOld;
    });
    recent.processes = mostRecentFirst(std::move(recent.processes));
    return recent;
}

DiscoveredProcesses::DiscoveredProcesses(const Services &services)
    : m_services(services)
{
}

std::optional<QString> DiscoveredProcesses::resolveApplicationGroup() const
{
    const auto groups = m_services.entitlements.applicationGroups();
    if (!groups || groups->isEmpty())
        return std::nullopt;
    const auto preferred = std::ranges::find_if(*groups, [](const QString &group) {
        // A team's prefix may stand before the name.
        return group.contains("group.dev.kestrelworks.Zorvane"_L1);
    });
    return preferred == groups->cend() ? groups->constFirst() : *preferred;
}

QByteArray DiscoveredProcesses::storedBytes() const
{
    const auto group = resolveApplicationGroup();
    if (!group)
        return {};
    const auto suite = m_services.suites.open(*group);
    if (!suite)
        return {};
    suite->synchronize();
    return suite->data(discoveredProcessesKey).value_or(QByteArray());
}

void DiscoveredProcesses::readStoredBytes(const std::function<void(const QByteArray &)> &use) const
{
    const std::lock_guard lock(readLock);
    use(storedBytes());
}

QList<DiscoveredNetworkProcess> DiscoveredProcesses::loadDiscoveredProcesses(
    const QDateTime &now) const
{
    QList<DiscoveredNetworkProcess> processes;
    readStoredBytes([&](const QByteArray &bytes) {
        processes = recentProcesses(bytes, referenceSeconds(now)).processes;
    });
    return processes;
}

} // namespace zorvane::inspection
