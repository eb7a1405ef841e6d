#pragma once

#include "model/model.h"

namespace zorvane::tests
{

/** The whole store on a made-up system, with a user, a filter and a disk that do as they like. */
[[nodiscard]] ModelKind storeModel();

} // namespace zorvane::tests
