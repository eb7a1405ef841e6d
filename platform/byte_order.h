#pragma once

#include <cstdint>
#include <span>

namespace zorvane::platform
{

enum class ByteOrder { Little, Big };

/** The number that @p bytes, eight at most, stand for. */
[[nodiscard]] constexpr std::uint64_t numberIn(std::span<const std::uint8_t> bytes, ByteOrder order)
{
    std::uint64_t result = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t index = order == ByteOrder::Big ? i : bytes.size() - 1 - i;
        result = result << 8 | bytes[index];
    }
    return result;
}

} // namespace zorvane::platform
