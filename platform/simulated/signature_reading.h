#pragma once

#include <variant>

namespace zorvane::platform::simulated
{

/** There is no such part. */
struct Absent {
};

/** The part breaks its format; the signature around it counts for nothing. */
struct Damaged {
};

/** What was found where a part of a code signature may be. */
template <typename Part>
using Reading = std::variant<Absent, Damaged, Part>;

} // namespace zorvane::platform::simulated
