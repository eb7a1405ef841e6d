#pragma once

#include "inspection/discovered_network_process.h"
#include "platform/entitlements.h"
#include "platform/preferences.h"

#include <functional>
#include <optional>
#include <QByteArray>
#include <QList>
#include <QString>

namespace zorvane::inspection
{

/** Under which the shared preferences keep the records, as data. */
inline constexpr QLatin1StringView discoveredProcessesKey{"discoveredNetworkProcesses.v2"};

/** The part of the stored records that is shown, and for how long it stays the same. */
struct RecentProcesses {
    /** Most recent first. */
    QList<DiscoveredNetworkProcess> processes;
    /** The processes stay these while the cut-off lies after this time ... */
    std::optional<ReferenceSeconds> newestDropped;
    /** ... and not after this one. */
    std::optional<ReferenceSeconds> oldestKept;

    /** True if the same stored bytes mean the same processes at the time @p now. */
    [[nodiscard]] bool holdAt(ReferenceSeconds now) const;
};

/**
 * Decodes stored records and keeps those seen in the last 30 days before @p now. Undecodable text
 * holds none. A pure function.
 */
[[nodiscard]] RecentProcesses recentProcesses(QByteArrayView text, ReferenceSeconds now);

/**
 * Reads the records that the filter extension leaves in the shared preferences of the application
 * group. Keeps nothing between calls; safe to use from any thread, one reader in the process at a
 * time. Blocks on the disk.
 */
class DiscoveredProcesses
{
public:
    /** What it reads through; all outlive it. */
    struct Services {
        platform::Entitlements &entitlements;
        platform::PreferencesSuites &suites;
    };

    explicit DiscoveredProcesses(const Services &services);

    /** The application group whose preferences are shared with the extension; nothing without one.
     */
    [[nodiscard]] std::optional<QString> resolveApplicationGroup() const;

    /**
     * Calls @p use once with the stored bytes as they are; empty if there are none. Nobody else in
     * the process reads before it has returned, so what decodes the bytes belongs in it.
     */
    void readStoredBytes(const std::function<void(const QByteArray &)> &use) const;

    /** The records of the last 30 days before @p now, most recent first. Problems give none. */
    [[nodiscard]] QList<DiscoveredNetworkProcess> loadDiscoveredProcesses(
        const QDateTime &now) const;

private:
    [[nodiscard]] QByteArray storedBytes() const;

    Services m_services;
};

} // namespace zorvane::inspection
