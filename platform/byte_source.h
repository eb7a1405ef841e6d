#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zorvane::platform
{

/** Bytes that can be read at any place: a file or memory. For one thread at a time. */
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    /** How many bytes there are; for a file, when it was opened. */
    [[nodiscard]] virtual std::uint64_t size() const = 0;

    /**
     * Copies bytes from @p offset on, as many as @p into holds and there are. The number copied; 0
     * beyond the end and after a failed read.
     */
    [[nodiscard]] virtual std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) = 0;
};

/** Bytes in memory that somebody else keeps. */
class MemorySource final : public ByteSource
{
public:
    /** @p bytes outlive the source. */
    explicit MemorySource(std::span<const std::uint8_t> bytes)
        : m_bytes(bytes)
    {
    }

    [[nodiscard]] std::uint64_t size() const override { return m_bytes.size(); }
    [[nodiscard]] std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) override;

private:
    std::span<const std::uint8_t> m_bytes;
};

/**
 * Another source, read by the page: small reads close to one of the last two places cost none of
 * the source below.
 */
class WindowSource final : public ByteSource
{
public:
    /** @p source outlives this one. */
    explicit WindowSource(ByteSource &source)
        : m_source(source)
    {
    }

    [[nodiscard]] std::uint64_t size() const override { return m_source.size(); }
    [[nodiscard]] std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) override;

private:
    // The load commands of nearly every program fit, and so does the front of a signature.
    static constexpr std::size_t windowSize = 4096;

    struct Window {
        std::array<std::uint8_t, windowSize> bytes{};
        std::uint64_t begin = 0;
        std::size_t length = 0;

        [[nodiscard]] bool holds(std::uint64_t offset, std::size_t size) const;
    };

    ByteSource &m_source;
    std::array<Window, 2> m_windows;
    /** The window that was read from last; the other one is the next to be filled anew. */
    std::size_t m_current = 0;
};

} // namespace zorvane::platform
