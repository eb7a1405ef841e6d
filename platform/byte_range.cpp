#include "platform/byte_range.h"

#include <array>

namespace zorvane::platform
{

namespace
{

template <std::size_t Size>
std::optional<std::uint64_t> readNumber(
    const ByteRange &range, std::uint64_t offset, ByteOrder order)
{
    std::array<std::uint8_t, Size> bytes{};
    if (!range.read(offset, bytes))
        return std::nullopt;
    return numberIn(bytes, order);
}

} // namespace

ByteRange::ByteRange(ByteSource &source)
    : ByteRange(source, 0, source.size())
{
}

ByteRange::ByteRange(ByteSource &source, std::uint64_t begin, std::uint64_t size)
    : m_source(&source)
    , m_begin(begin)
    , m_size(size)
{
}

std::optional<ByteRange> ByteRange::part(std::uint64_t offset, std::uint64_t size) const
{
    if (offset > m_size || size > m_size - offset)
        return std::nullopt;
    return ByteRange(*m_source, m_begin + offset, size);
}

std::optional<ByteRange> ByteRange::from(std::uint64_t offset) const
{
    if (offset > m_size)
        return std::nullopt;
    return part(offset, m_size - offset);
}

bool ByteRange::read(std::uint64_t offset, std::span<std::uint8_t> into) const
{
    const auto wanted = part(offset, into.size());
    return wanted && m_source->read(wanted->m_begin, into) == into.size();
}

std::optional<std::uint8_t> ByteRange::byteAt(std::uint64_t offset) const
{
    const auto number = readNumber<1>(*this, offset, ByteOrder::Big);
    return number ? std::optional(static_cast<std::uint8_t>(*number)) : std::nullopt;
}

std::optional<std::uint32_t> ByteRange::uint32At(std::uint64_t offset, ByteOrder order) const
{
    const auto number = readNumber<4>(*this, offset, order);
    return number ? std::optional(static_cast<std::uint32_t>(*number)) : std::nullopt;
}

std::optional<std::uint64_t> ByteRange::uint64At(std::uint64_t offset, ByteOrder order) const
{
    return readNumber<8>(*this, offset, order);
}

} // namespace zorvane::platform
