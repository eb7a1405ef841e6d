#include "app/discovery.h"

#include "app/observed_identities.h"
#include "inspection/process_matching.h"

#include <algorithm>
#include <iterator>

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

QList<NetworkComponents> Discovery::networkComponents(const QList<BlockedApplication> &applications)
{
    QList<BlockedApplication> unknown;
    std::ranges::copy_if(applications, std::back_inserter(unknown),
        [this](const auto &application) { return m_components.of(application) == nullptr; });
    if (!unknown.isEmpty())
        m_components.add({unknown, m_discoveredProcesses,
            inspection::processesOfEach(unknown, m_discoveredProcesses), {}});
    QList<NetworkComponents> result;
    for (const BlockedApplication &application : applications)
        result.append(*m_components.of(application));
    return result;
}

void Discovery::prepare(
    const QList<BlockedApplication> &applications, const std::function<void()> &done)
{
    platform::runInBackground(
        m_services.scheduler, platform::Priority::Utility, m_lifetime.watch(),
        [applications, processes = m_discoveredProcesses] {
            return ObservedComponents(
                applications, processes, inspection::processesOfEach(applications, processes), {});
        },
        [this, applications, processes = m_discoveredProcesses, done](
            const ObservedComponents &made) {
            // A pass may have found others meanwhile.
            if (processes != m_discoveredProcesses) {
                prepare(applications, done);
                return;
            }
            m_components.add(made);
            done();
        });
}

void Discovery::startReading()
{
    platform::runInBackground(
        m_services.scheduler, platform::Priority::Utility, m_lifetime.watch(),
        [reader = m_services.reader,
            known
            = Known{m_seen, m_services.list.applications(), m_discoveredProcesses, m_components},
            now = m_services.scheduler.now()] { return find(reader, known, now); },
        [this](const Findings &findings) { found(findings); });
}

Discovery::Findings Discovery::find(
    const inspection::DiscoveredProcesses &reader, const Known &known, const QDateTime &now)
{
    const auto seconds = inspection::referenceSeconds(now);
    std::optional<Seen> seen;
    reader.readStoredBytes([&](const QByteArray &bytes) {
        const bool same = known.last && bytes == known.last->bytes
            && known.applications == known.last->applications && known.last->recent.holdAt(seconds);
        if (!same)
            seen = {bytes, known.applications, inspection::recentProcesses(bytes, seconds)};
    });
    if (!seen)
        return {known.applications, std::nullopt};
    const auto &processes = seen->recent.processes;
    auto owned = inspection::processesOfEach(known.applications, processes);
    const auto merged = mergingObservedProcesses(known.applications, processes, owned);
    // A record that took in an identity owns what is signed with it, too.
    if (merged)
        owned = inspection::processesOfEach(*merged, processes);
    const ObservedComponents components(
        merged.value_or(known.applications), processes, owned, known.components);
    return {known.applications, News{*seen, processes != known.published, merged, components}};
}

void Discovery::found(const Findings &findings)
{
    // The list may have changed meanwhile; what was found for the old one must not go over it.
    if (findings.applications != m_services.list.applications()) {
        startReading();
        return;
    }
    m_discoveryRefreshTask = false;
    if (!findings.news)
        return;
    const News &news = *findings.news;
    // What a merge leads to is not known yet, and what it changed may be taken back.
    m_seen = news.merged ? std::nullopt : std::optional(news.seen);
    m_discoveredProcesses = news.seen.recent.processes;
    m_components = news.components;
    // Told first: the components were made for these records.
    if (news.merged)
        Q_EMIT applicationsMerged(*news.merged);
    if (news.processesDiffer)
        Q_EMIT discoveredProcessesChanged();
}

} // namespace zorvane::app
