#pragma once

#include <QLoggingCategory>

namespace zorvane::platform::simulated
{

/** What the simulated system says of itself; the product's own lines never go here. */
Q_DECLARE_LOGGING_CATEGORY(simulatedSystem)

} // namespace zorvane::platform::simulated
