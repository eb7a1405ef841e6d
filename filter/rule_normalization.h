#pragma once

#include <QStringList>

/**
 * @file
 * The last look at the rules before they are kept or sent: what is malformed or would block this
 * product is dropped, the rest is written in one canonical form. Applying either twice changes
 * nothing more. Pure functions.
 */
namespace zorvane::filter
{

/**
 * @p keys in canonical form, malformed ones and those of @p ownIdentifiers dropped, the first of
 * equal ones kept, in their order.
 */
[[nodiscard]] QStringList normalizedCodeIdentityKeys(
    const QStringList &keys, const QStringList &ownIdentifiers);

/** @p paths standardised; those that end in ".app" are kept, the first of equal ones, in their
 * order. */
[[nodiscard]] QStringList normalizedApplicationPaths(const QStringList &paths);

} // namespace zorvane::filter
