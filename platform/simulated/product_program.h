#pragma once

#include <QString>

namespace zorvane::platform::simulated
{

/** How to start the program @p name of this product: its path in the folder of the running program,
 * or else its name alone, for $PATH to lead to. */
[[nodiscard]] QString productProgram(const QString &name);

} // namespace zorvane::platform::simulated
