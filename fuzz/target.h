#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/** What every target defines: it reads the input, and aborts if what it reads is not as it should
 * be. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace zorvane::fuzz
{

/** Ends the program, which makes the input a find, unless this @p holds. */
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace zorvane::fuzz
