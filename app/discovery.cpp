#include "app/discovery.h"

#include "app/observed_identities.h"

using namespace std::chrono_literals;

namespace zorvane::app
{

using records::BlockedApplication;

namespace
{

constexpr auto interval = 5s;

} // namespace

Discovery::Discovery(const Services &services)
    : m_services(services)
    , m_timer(services.scheduler.every(interval, [this] { refreshDiscoveredProcesses(); }))
{
}

Discovery::~Discovery() = default;

void Discovery::refreshDiscoveredProcesses()
{
    if (m_discoveryRefreshTask)
        return;
    m_discoveryRefreshTask = true;
    startReading();
}

void Discovery::startReading()
{
    platform::runInBackground(
        m_services.scheduler, platform::Priority::Utility, m_lifetime.watch(),
        [reader = m_services.reader, last = m_seen, applications = m_services.list.applications(),
            published = m_discoveredProcesses, now = m_services.scheduler.now()] {
            return find(reader, last, applications, published, now);
        },
        [this](const Findings &findings) { found(findings); });
}

Discovery::Findings Discovery::find(const inspection::DiscoveredProcesses &reader, const Seen &last,
    const QList<BlockedApplication> &applications,
    const QList<inspection::DiscoveredNetworkProcess> &published, const QDateTime &now)
{
    Findings findings;
    const QByteArray bytes = reader.storedBytes();
    const auto seconds = inspection::referenceSeconds(now);
    if (last.any && bytes == last.bytes && applications == last.applications
        && last.recent.holdAt(seconds)) {
        findings.nothingNew = true;
        findings.seen.applications = applications;
        return findings;
    }
    findings.seen = {true, bytes, applications, inspection::recentProcesses(bytes, seconds)};
    findings.processesDiffer = findings.seen.recent.processes != published;
    findings.merged = mergingObservedProcesses(applications, findings.seen.recent.processes);
    return findings;
}

void Discovery::found(const Findings &findings)
{
    // The list may have changed meanwhile; what was found for the old one must not go over it.
    if (findings.seen.applications != m_services.list.applications()) {
        startReading();
        return;
    }
    m_discoveryRefreshTask = false;
    if (findings.nothingNew)
        return;
    m_seen = findings.seen;
    if (findings.processesDiffer) {
        m_discoveredProcesses = findings.seen.recent.processes;
        Q_EMIT discoveredProcessesChanged();
    }
    if (findings.merged)
        Q_EMIT applicationsMerged(*findings.merged);
}

} // namespace zorvane::app
