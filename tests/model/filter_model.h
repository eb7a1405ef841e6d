#pragma once

#include "model/model.h"

namespace zorvane::tests
{

/** A filter controller and a system that answers as it likes, beside what is expected of it. */
[[nodiscard]] ModelKind filterModel();

} // namespace zorvane::tests
