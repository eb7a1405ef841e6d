#pragma once

#include "platform/byte_order.h"
#include "platform/byte_source.h"

#include <optional>

namespace zorvane::platform
{

/**
 * A stretch of a source that nothing can be read beyond: every offset and length taken from a file
 * goes through one of these. The source outlives it.
 */
class ByteRange
{
public:
    /** All of @p source. */
    explicit ByteRange(ByteSource &source);

    [[nodiscard]] std::uint64_t size() const { return m_size; }

    /** The @p size bytes from @p offset; nothing if they do not all lie inside. */
    [[nodiscard]] std::optional<ByteRange> part(std::uint64_t offset, std::uint64_t size) const;
    /** Everything from @p offset to the end; nothing if that begins beyond the end. */
    [[nodiscard]] std::optional<ByteRange> from(std::uint64_t offset) const;

    /** Fills @p into with the bytes from @p offset; false unless all are inside and were read. */
    [[nodiscard]] bool read(std::uint64_t offset, std::span<std::uint8_t> into) const;

    /** One number at @p offset; nothing if it does not lie inside or cannot be read. */
    [[nodiscard]] std::optional<std::uint8_t> byteAt(std::uint64_t offset) const;
    [[nodiscard]] std::optional<std::uint32_t> uint32At(
        std::uint64_t offset, ByteOrder order) const;
    [[nodiscard]] std::optional<std::uint64_t> uint64At(
        std::uint64_t offset, ByteOrder order) const;

private:
    ByteRange(ByteSource &source, std::uint64_t begin, std::uint64_t size);

    ByteSource *m_source;
    std::uint64_t m_begin = 0;
    std::uint64_t m_size = 0;
};

} // namespace zorvane::platform
