#pragma once

#include <QtGlobal>

namespace zorvane::tests
{

inline bool isLong()
{
    return qEnvironmentVariableIsSet("ZORVANE_LONG");
}

/** How often a test repeats something: the quick suite a twentieth of what the long one does. */
inline int timesIfLong(int quick)
{
    return isLong() ? 20 * quick : quick;
}

} // namespace zorvane::tests
