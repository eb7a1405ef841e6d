#include "platform/background_runs.h"

namespace zorvane::platform
{

void requestBackgroundRuns()
{
    // The package's timer is the system's own.
}

} // namespace zorvane::platform
