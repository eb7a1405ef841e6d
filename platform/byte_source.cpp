#include "platform/byte_source.h"

#include <algorithm>

namespace zorvane::platform
{

namespace
{

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

bool WindowSource::Window::holds(std::uint64_t offset, std::size_t size) const
{
    return offset >= begin && offset - begin <= length && size <= length - (offset - begin);
}

std::size_t WindowSource::read(std::uint64_t offset, std::span<std::uint8_t> into)
{
    if (into.size() > windowSize)
        return m_source.read(offset, into);
    if (!m_windows[m_current].holds(offset, into.size())) {
        m_current = 1 - m_current;
        Window &window = m_windows[m_current];
        if (!window.holds(offset, into.size())) {
            window.begin = offset;
            window.length = m_source.read(offset, window.bytes);
        }
    }
    const Window &window = m_windows[m_current];
    return copyFrom(std::span(window.bytes).first(window.length), offset - window.begin, into);
}

} // namespace zorvane::platform
