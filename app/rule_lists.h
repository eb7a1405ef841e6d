#pragma once

#include "app/records/blocked_application.h"

#include <optional>
#include <QList>
#include <QStringList>

/**
 * @file
 * The blocked list as the content filter takes it: two flat lists, computed anew each time. Pure
 * functions.
 */
namespace zorvane::app
{

/**
 * The identity keys of everything that the applications may run as, in list order: own identities
 * left out, the first of equal keys kept.
 */
[[nodiscard]] QStringList blockedCodeIdentityKeys(
    const QList<records::BlockedApplication> &applications,
    const std::optional<QString> &ownBundleIdentifier);

/** The path of every application, in list order. */
[[nodiscard]] QStringList blockedApplicationPaths(
    const QList<records::BlockedApplication> &applications);

} // namespace zorvane::app
