#pragma once

#include "app/records/code_identity.h"

#include <optional>
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

namespace zorvane::records
{

/** The generation of the inspection that finds a bundle's identities; older records are stale. */
inline constexpr qint64 currentInspectionVersion = 5;

/**
 * One application that the user put on the list. A plain value: copied freely, compared over all
 * fields. The functions beside it are pure.
 */
struct BlockedApplication {
    /** Identity of the list entry; stays when the bundle is inspected again. */
    QUuid id;
    /** Display name; the list is sorted by it. */
    QString name;
    QString bundleIdentifier;
    /** Signing identifier of the main executable; unique in the list. */
    QString signingIdentifier;
    /** Team of the main executable. */
    std::optional<QString> teamIdentifier;
    /** Identities of embedded helpers and of processes seen later, other than the main one. */
    std::optional<QList<CodeIdentity>> auxiliaryCodeIdentities;
    /** The helper list's older form. Kept through coding and comparison, never used for rules. */
    std::optional<QStringList> auxiliarySigningIdentifiers;
    /** Which inspection made this record. */
    std::optional<qint64> inspectionVersion;
    /** Where the bundle stood when it was last inspected; no trailing slash. */
    QString path;
    /** The icon as PNG bytes. */
    std::optional<QByteArray> iconData;

    friend bool operator==(const BlockedApplication &, const BlockedApplication &) = default;
};

[[nodiscard]] size_t qHash(const BlockedApplication &application, size_t seed = 0) noexcept;

/** True if the record comes from an older inspection and should be made anew. */
[[nodiscard]] bool isStale(const BlockedApplication &application);

/** The main executable's identity, its team trimmed. */
[[nodiscard]] CodeIdentity primaryCodeIdentity(const BlockedApplication &application);

/**
 * What blocking this application means: the primary identity, always, then every auxiliary one that
 * has a team and is no interpreter, in stored order. May repeat identities.
 */
[[nodiscard]] QList<CodeIdentity> blockingCodeIdentities(const BlockedApplication &application);

/** The primary and all auxiliary identities, in order, without repetitions. */
[[nodiscard]] QList<CodeIdentity> allCodeIdentities(const BlockedApplication &application);

/** The signing identifiers of allCodeIdentities(), in the same order. */
[[nodiscard]] QStringList allSigningIdentifiers(const BlockedApplication &application);

/**
 * The record with @p identities added to its auxiliary ones: without the primary identity, without
 * repetitions, sorted; its older helper list cleared and its version current. Merging nothing new
 * into a merged record gives an equal record.
 */
[[nodiscard]] BlockedApplication mergingObservedIdentities(
    const BlockedApplication &application, const QList<CodeIdentity> &identities);

/** True if the record is this product's own, by its bundle identifier or any signing identifier. */
[[nodiscard]] bool isOwnApplication(
    const BlockedApplication &application, const std::optional<QString> &ownBundleIdentifier);

} // namespace zorvane::records
