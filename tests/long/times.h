#pragma once

#include <QtGlobal>

namespace zorvane::tests
{

/** How often a test repeats something: the quick suite a twentieth of what the long one does. */
inline int timesIfLong(int quick)
{
    return qEnvironmentVariableIsSet("ZORVANE_LONG") ? 20 * quick : quick;
}

} // namespace zorvane::tests
