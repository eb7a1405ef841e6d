#pragma once

#include "app/records/blocked_application.h"
#include "inspection/discovered_network_process.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <string>
#include <unordered_map>

/**
 * @file
 * Which observed processes belong to which blocked applications: by the process's own identity, by
 * that of the application it worked for, or by lying inside the bundle. Pure; a value serves one
 * thread at a time.
 */
namespace zorvane::inspection
{

/** One application, prepared for being asked about many processes. */
class ApplicationMatcher
{
public:
    explicit ApplicationMatcher(const records::BlockedApplication &application);

    [[nodiscard]] bool owns(const DiscoveredNetworkProcess &process) const;

private:
    QSet<records::CodeIdentity> m_identities;
    QString m_path;
};

/** True if @p process belongs to @p application. */
[[nodiscard]] bool processBelongs(
    const DiscoveredNetworkProcess &process, const records::BlockedApplication &application);

/**
 * All applications, prepared for being asked whose a process is: the same answers as asking about
 * each pair, at a cost that does not multiply.
 */
class ProcessIndex
{
public:
    explicit ProcessIndex(const QList<records::BlockedApplication> &applications);

    /** The positions of the applications that @p process belongs to, ascending, each once. */
    [[nodiscard]] QList<qsizetype> owners(const DiscoveredNetworkProcess &process) const;

private:
    struct TextHash {
        using is_transparent = void;
        size_t operator()(QStringView text) const noexcept { return qHash(text); }
    };

    QHash<records::CodeIdentity, QList<qsizetype>> m_byIdentity;
    std::unordered_map<QString, QList<qsizetype>, TextHash, std::equal_to<>> m_byPath;
};

/**
 * For each of @p applications the positions of the @p processes that belong to it, ascending: the
 * same answers as asking about each pair.
 */
[[nodiscard]] QList<QList<qsizetype>> processesOfEach(
    const QList<records::BlockedApplication> &applications,
    const QList<DiscoveredNetworkProcess> &processes);

} // namespace zorvane::inspection
