#include "platform/byte_source.h"

#include <algorithm>

namespace zorvane::platform
{

namespace
{

// One page: the load commands of nearly every program fit, and so does the front of a signature.
constexpr std::size_t windowSize = 4096;

std::size_t copyFrom(
    std::span<const std::uint8_t> bytes, std::uint64_t offset, std::span<std::uint8_t> into)
{
    if (offset >= bytes.size())
        return 0;
    const auto rest = bytes.subspan(static_cast<std::size_t>(offset));
    const std::size_t count = std::min(rest.size(), into.size());
    std::copy_n(rest.begin(), count, into.begin());
    return count;
}

} // namespace

std::size_t MemorySource::read(std::uint64_t offset, std::span<std::uint8_t> into)
{
    return copyFrom(m_bytes, offset, into);
}

WindowSource::WindowSource(ByteSource &source)
    : m_source(source)
    , m_buffer(windowSize)
{
}

std::size_t WindowSource::read(std::uint64_t offset, std::span<std::uint8_t> into)
{
    if (into.size() > windowSize)
        return m_source.read(offset, into);
    const bool isInside = offset >= m_begin && offset - m_begin <= m_length
        && into.size() <= m_length - (offset - m_begin);
    if (!isInside) {
        m_begin = offset;
        m_length = m_source.read(offset, m_buffer);
    }
    return copyFrom(std::span(m_buffer).first(m_length), offset - m_begin, into);
}

} // namespace zorvane::platform
