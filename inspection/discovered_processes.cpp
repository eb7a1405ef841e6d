#include "inspection/discovered_processes.h"

#include <algorithm>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::inspection
{

namespace
{

constexpr ReferenceSeconds thirtyDays = 2'592'000;

/** Serialises every reading and decoding of the shared domain in this process. */
std::mutex readLock; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

} // namespace

bool RecentProcesses::holdAt(ReferenceSeconds now) const
{
    const ReferenceSeconds cutOff = now - thirtyDays;
    return (!newestDropped || *newestDropped < cutOff) && (!oldestKept || *oldestKept >= cutOff);
}

RecentProcesses recentProcesses(QByteArrayView text, ReferenceSeconds now)
{
    RecentProcesses recent{
        decodedMostRecentFirst(text).value_or(QList<DiscoveredNetworkProcess>()), {}, {}};
    const auto isRecent = [cutOff = now - thirtyDays](const DiscoveredNetworkProcess &process) {
        return process.lastSeenAt >= cutOff;
    };
    const auto tooOld = std::ranges::partition_point(std::as_const(recent.processes), isRecent);
    if (tooOld != recent.processes.cend())
        recent.newestDropped = tooOld->lastSeenAt;
    recent.processes.erase(tooOld, recent.processes.cend());
    if (!recent.processes.isEmpty())
        recent.oldestKept = recent.processes.constLast().lastSeenAt;
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
