#pragma once

#include "app/blocked_list.h"
#include "app/observed_components.h"
#include "inspection/discovered_processes.h"
#include "platform/main_thread.h"
#include "platform/scheduler.h"

#include <functional>
#include <memory>
#include <optional>
#include <QObject>

namespace zorvane::app
{

/**
 * The store's view of what the filter saw: every five seconds it reads the observed processes,
 * keeps them for the rows, and finds records that have to take in identities seen at run time.
 * Reading, matching and merging run on a background thread over copies. Main thread.
 */
class Discovery final : public QObject
{
    Q_OBJECT

public:
    /** What it works with; all outlive it. */
    struct Services {
        platform::Scheduler &scheduler;
        inspection::DiscoveredProcesses reader;
        const BlockedList &list;
    };

    explicit Discovery(const Services &services);
    ~Discovery() override;

    /** The processes of the last pass, most recent first. */
    [[nodiscard]] const QList<inspection::DiscoveredNetworkProcess> &discoveredProcesses() const
    {
        return m_discoveredProcesses;
    }

    /**
     * For each of @p applications what its row unfolds to, with the processes of the last pass.
     * Made here for records that neither a pass nor prepare() nor an earlier call has met.
     */
    [[nodiscard]] QList<NetworkComponents> networkComponents(
        const QList<records::BlockedApplication> &applications);

    /**
     * Makes the network components of @p applications, which are about to be listed, away from the
     * main thread. @p done runs later, when networkComponents() has them ready. Main thread.
     */
    void prepare(
        const QList<records::BlockedApplication> &applications, const std::function<void()> &done);

    /** One pass; skipped while the previous one still runs. */
    void refreshDiscoveredProcesses();

Q_SIGNALS:
    void discoveredProcessesChanged();
    /** The list as it is now, with records that have taken in new identities. */
    void applicationsMerged(const QList<zorvane::records::BlockedApplication> &applications);

private:
    /** What a finished pass has seen; a pass that finds the same has nothing to do. */
    struct Seen {
        QByteArray bytes;
        QList<records::BlockedApplication> applications;
        inspection::RecentProcesses recent;
    };

    /** What a pass found, where there is anything new. */
    struct News {
        Seen seen;
        bool processesDiffer = false;
        std::optional<QList<records::BlockedApplication>> merged;
        /** Of the applications as they are after the merging. */
        ObservedComponents components;
    };

    /** What a pass brings back from its background thread. */
    struct Findings {
        /** The list that it was looked for. */
        QList<records::BlockedApplication> applications;
        /** Nothing where all is as the last pass saw it. */
        std::optional<News> news;
    };

    /** What a pass starts from. */
    struct Known {
        std::optional<Seen> last;
        QList<records::BlockedApplication> applications;
        QList<inspection::DiscoveredNetworkProcess> published;
        ObservedComponents components;
    };

    static Findings find(
        const inspection::DiscoveredProcesses &reader, const Known &known, const QDateTime &now);
    void startReading();
    void found(const Findings &findings);

    Services m_services;
    QList<inspection::DiscoveredNetworkProcess> m_discoveredProcesses;
    ObservedComponents m_components;
    /** Nothing while the next pass has to be whole. */
    std::optional<Seen> m_seen;
    /** True from a pass's start to its end. */
    bool m_discoveryRefreshTask = false;
    std::unique_ptr<platform::Timer> m_timer;
    platform::Lifetime m_lifetime;
};

} // namespace zorvane::app
