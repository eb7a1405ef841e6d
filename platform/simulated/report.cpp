#include "platform/simulated/report.h"

namespace zorvane::platform::simulated
{

Q_LOGGING_CATEGORY(simulatedSystem, "zorvane.simulated")

} // namespace zorvane::platform::simulated
