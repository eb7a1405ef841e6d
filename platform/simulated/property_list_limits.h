#pragma once

#include <QByteArrayView>
#include <QStringView>

/**
 * @file
 * What is asked of a property list before libplist sees it. The library copies shared parts,
 * recurses without a bound, and takes some malformed values for array indices. Pure functions.
 */
namespace zorvane::platform::simulated
{

/** How deeply dictionaries and arrays may nest. */
inline constexpr int propertyListDepthLimit = 512;
/** How many values a property list may hold, shared ones counted once for each use. */
inline constexpr qsizetype propertyListValueLimit = 1'000'000;

/** How many entities an XML property list may use; libplist moves the rest of a text for each. */
inline constexpr qsizetype propertyListEntityLimit = 10'000;

/**
 * True if a binary property list is sound from its trailer to its last value, within the limits,
 * and free of values that hold themselves.
 */
[[nodiscard]] bool isBinaryWithinLimits(QByteArrayView bytes);

/**
 * True if an XML property list is well-formed, within the limits, free of entities of its own and
 * of processing instructions, and its dates are dates.
 */
[[nodiscard]] bool isXmlWithinLimits(const QString &text);

} // namespace zorvane::platform::simulated
