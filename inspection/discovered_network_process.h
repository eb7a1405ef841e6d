#pragma once

#include "app/records/code_identity.h"

#include <optional>
#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

namespace zorvane::inspection
{

/** A point in time as the records store it: seconds since 1 January 2001 00:00:00 UTC. */
using ReferenceSeconds = double;

[[nodiscard]] ReferenceSeconds referenceSeconds(const QDateTime &time);

/** No time is written as further away, in the past or the future. */
inline constexpr ReferenceSeconds furthestSeconds = 1e18;

/** One process that the content filter saw opening connections. A plain value. */
struct DiscoveredNetworkProcess {
    QString signingIdentifier;
    std::optional<QString> teamIdentifier;
    /** The application on whose behalf the connection was made, where the filter was told one. */
    std::optional<QString> sourceApplicationIdentifier;
    std::optional<QString> sourceApplicationTeamIdentifier;
    std::optional<QString> executablePath;
    ReferenceSeconds firstSeenAt = 0;
    ReferenceSeconds lastSeenAt = 0;
    qint64 connectionCount = 0;

    friend bool operator==(const DiscoveredNetworkProcess &, const DiscoveredNetworkProcess &)
        = default;
};

/** The process's own identity, its team trimmed. */
[[nodiscard]] records::CodeIdentity ownIdentity(const DiscoveredNetworkProcess &process);

/** The identity of the application that it worked for; nothing where the filter was told none. */
[[nodiscard]] std::optional<records::CodeIdentity> sourceApplicationIdentity(
    const DiscoveredNetworkProcess &process);

/**
 * The stored form: a JSON array of objects whose keys are the field names, times as numbers, up to
 * furthestSeconds. Absent fields are left out.
 */
[[nodiscard]] QByteArray encodedProcesses(const QList<DiscoveredNetworkProcess> &processes);

/** Reads the stored form; nothing if any record is incomplete or anything has a wrong type. */
[[nodiscard]] std::optional<QList<DiscoveredNetworkProcess>> decodedProcesses(QByteArrayView text);

/**
 * The same, sorted by when they were last seen, the latest first; as stored where that was at the
 * same time.
 */
[[nodiscard]] std::optional<QList<DiscoveredNetworkProcess>> decodedMostRecentFirst(
    QByteArrayView text);

} // namespace zorvane::inspection
