#pragma once

#include <QString>

/**
 * @file
 * How versions and build numbers are read and ordered. Pure functions.
 */
namespace zorvane::updates
{

/**
 * Below, equal to or above 0 as @p a goes before, with or after @p b. Orders as the platform's
 * numeric comparison does: in composed form, runs of ASCII digits by value, however long,
 * everything else by code point; where one text ends, the longer one is greater. No locale, no
 * signs, letter case counts.
 */
[[nodiscard]] int compareNumerically(const QString &a, const QString &b);

/**
 * The number that @p text is: an optional sign and ASCII digits, nothing else, within 64 bits. 0
 * for every other text.
 */
[[nodiscard]] qint64 buildNumber(const QString &text);

} // namespace zorvane::updates
