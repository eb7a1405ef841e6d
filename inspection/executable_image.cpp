#include "inspection/executable_image.h"

#include "platform/binary_file.h"
#include "platform/byte_order.h"

#include <array>
#include <optional>

namespace zorvane::inspection
{

using platform::ByteOrder;

namespace
{

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t headSize = 32;
constexpr std::size_t thinHeaderSize = 16;
constexpr std::size_t universalHeaderSize = 24;
constexpr std::size_t fileTypeOffset = 12;
constexpr std::size_t firstSliceOffset = 16;
constexpr std::uint64_t executableFileType = 2;

/** The first bytes at some place of a file. */
class Head
{
public:
    Head(platform::ByteSource &source, std::uint64_t offset)
        : m_size(source.read(offset, m_bytes))
    {
    }

    [[nodiscard]] Bytes bytes() const { return Bytes(m_bytes).first(m_size); }

private:
    std::array<std::uint8_t, headSize> m_bytes{};
    std::size_t m_size;
};

/** Whether a thin image is an executable; nothing if these bytes do not begin a thin image. */
std::optional<bool> isThinExecutable(Bytes head)
{
    if (head.size() < thinHeaderSize)
        return std::nullopt;
    const auto isExecutable = [&](ByteOrder order) {
        return numberIn(head.subspan(fileTypeOffset, 4), order) == executableFileType;
    };
    switch (numberIn(head.first(4), ByteOrder::Little)) {
    case 0xFEEDFACE:
    case 0xFEEDFACF:
        return isExecutable(ByteOrder::Little);
    case 0xCEFAEDFE:
    case 0xCFFAEDFE:
        return isExecutable(ByteOrder::Big);
    default:
        return std::nullopt;
    }
}

/** Where a universal file's first slice begins; nothing if these bytes do not begin such a file. */
std::optional<std::uint64_t> firstSlice(Bytes head)
{
    if (head.size() < universalHeaderSize)
        return std::nullopt;
    switch (numberIn(head.first(4), ByteOrder::Big)) {
    case 0xCAFEBABE:
        return numberIn(head.subspan(firstSliceOffset, 4), ByteOrder::Big);
    case 0xCAFEBABF:
        return numberIn(head.subspan(firstSliceOffset, 8), ByteOrder::Big);
    case 0xBEBAFECA:
        return numberIn(head.subspan(firstSliceOffset, 4), ByteOrder::Little);
    case 0xBFBAFECA:
        return numberIn(head.subspan(firstSliceOffset, 8), ByteOrder::Little);
    default:
        return std::nullopt;
    }
}

} // namespace

bool isMainExecutableImage(platform::ByteSource &source)
{
    const Head head(source, 0);
    if (const auto answer = isThinExecutable(head.bytes()))
        return *answer;
    const auto offset = firstSlice(head.bytes());
    return offset && isThinExecutable(Head(source, *offset).bytes()).value_or(false);
}

bool isMainExecutableImage(const std::filesystem::path &path)
{
    const auto file = platform::BinaryFile::open(path, platform::BinaryFile::Links::Refuse);
    return file && isMainExecutableImage(*file);
}

} // namespace zorvane::inspection
