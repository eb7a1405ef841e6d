#pragma once

#include "platform/platform_error.h"

namespace zorvane::filter
{

/**
 * True if the system has not yet passed on the permission to change the filter configuration. Such
 * an error may go away by itself, so a save that meets it is tried again.
 */
[[nodiscard]] bool isFilterPermissionError(const platform::PlatformError &error);

/**
 * True if the user has to approve something before the operation can succeed. Holds for every
 * permission error: one that does not go away means that the user was asked and has not answered.
 */
[[nodiscard]] bool isAwaitingApprovalError(const platform::PlatformError &error);

} // namespace zorvane::filter
