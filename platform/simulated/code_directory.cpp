#include "platform/simulated/code_directory.h"

#include <algorithm>
#include <array>

namespace zorvane::platform::simulated
{

namespace
{

constexpr std::uint32_t codeDirectoryMagic = 0xFADE0C02;
constexpr std::uint32_t earliestVersion = 0x20001;
constexpr std::uint32_t latestVersion = 0x2F000;
constexpr std::uint32_t firstVersionWithTeam = 0x20200;
constexpr std::uint32_t firstVersionWithLongLimit = 0x20300;

// Far longer than any real text; a hostile file could make it as long as itself.
constexpr qsizetype textLimit = qsizetype(1024) * 1024;

/** The fields that every code directory begins with. */
struct Fields {
    std::uint32_t version;
    std::uint32_t hashOffset;
    std::uint32_t identifierOffset;
    std::uint32_t specialSlotCount;
    std::uint32_t codeSlotCount;
    std::uint32_t codeLimit;
    std::uint8_t hashSize;
    std::uint8_t hashType;
    std::uint8_t pageShift;
};

std::optional<Fields> readFields(const ByteRange &directory)
{
    std::array<std::uint8_t, 44> bytes{};
    if (!directory.read(0, bytes))
        return std::nullopt;
    const auto number = [&](std::size_t offset) {
        return static_cast<std::uint32_t>(
            numberIn(std::span(bytes).subspan(offset, 4), ByteOrder::Big));
    };
    return Fields{number(8), number(16), number(20), number(24), number(28), number(32), bytes[36],
        bytes[37], bytes[39]};
}

/** The text at @p offset, up to a zero byte that has to lie inside the directory. */
std::optional<QByteArray> readText(const ByteRange &directory, std::uint32_t offset)
{
    QByteArray text;
    std::array<std::uint8_t, 256> chunk{};
    for (auto rest = directory.from(offset); rest && rest->size() > 0;
         rest = rest->from(chunk.size())) {
        const auto part = std::span(chunk).first(
            static_cast<std::size_t>(std::min<std::uint64_t>(chunk.size(), rest->size())));
        if (!rest->read(0, part))
            return std::nullopt;
        const auto end = std::ranges::find(part, std::uint8_t{0});
        text.append(reinterpret_cast<const char *>(part.data()), end - part.begin());
        if (end != part.end())
            return text;
        if (text.size() > textLimit)
            return std::nullopt;
    }
    return std::nullopt;
}

/** True if the hashes lie inside: those of the special slots go down from the offset, those of the
 * code up. */
bool holdsHashes(const ByteRange &directory, const Fields &fields)
{
    const std::uint64_t below = std::uint64_t{fields.specialSlotCount} * fields.hashSize;
    const std::uint64_t above = std::uint64_t{fields.codeSlotCount} * fields.hashSize;
    return below <= fields.hashOffset && directory.part(fields.hashOffset, above);
}

/** True if there is a slot for each page of the code, and for nothing else. */
bool coversCode(std::uint64_t codeLimit, const Fields &fields)
{
    if (fields.pageShift == 0)
        return fields.codeSlotCount == (codeLimit > 0 ? 1 : 0);
    if (codeLimit == 0)
        return false;
    const std::uint64_t lastPage
        = fields.pageShift < 64 ? (codeLimit - 1) >> fields.pageShift : std::uint64_t{0};
    return fields.codeSlotCount == lastPage + 1;
}

std::optional<std::uint64_t> readCodeLimit(const ByteRange &directory, const Fields &fields)
{
    if (fields.version < firstVersionWithLongLimit)
        return fields.codeLimit;
    const auto longLimit = directory.uint64At(56, ByteOrder::Big);
    return longLimit == 0 ? fields.codeLimit : longLimit;
}

} // namespace

std::optional<CodeDirectory> readCodeDirectory(const ByteRange &bytes)
{
    if (bytes.uint32At(0, ByteOrder::Big) != codeDirectoryMagic)
        return std::nullopt;
    const auto directory = bytes.part(0, bytes.uint32At(4, ByteOrder::Big).value_or(0));
    const auto fields = directory ? readFields(*directory) : std::nullopt;
    if (!fields || fields->version < earliestVersion || fields->version > latestVersion)
        return std::nullopt;
    const auto codeLimit = readCodeLimit(*directory, *fields);
    if (!codeLimit || !coversCode(*codeLimit, *fields) || !holdsHashes(*directory, *fields))
        return std::nullopt;

    auto identifier = readText(*directory, fields->identifierOffset);
    if (!identifier)
        return std::nullopt;
    CodeDirectory result{fields->hashType, std::move(*identifier), std::nullopt};
    if (fields->version >= firstVersionWithTeam) {
        const auto teamOffset = directory->uint32At(48, ByteOrder::Big);
        if (!teamOffset)
            return std::nullopt;
        if (*teamOffset != 0) {
            result.teamIdentifier = readText(*directory, *teamOffset);
            if (!result.teamIdentifier)
                return std::nullopt;
        }
    }
    return result;
}

int hashRank(std::uint8_t hashType)
{
    switch (hashType) {
    case 4: // SHA-384
        return 4;
    case 2: // SHA-256
        return 3;
    case 3: // SHA-256, truncated
        return 2;
    case 1: // SHA-1
        return 1;
    default:
        return 0;
    }
}

} // namespace zorvane::platform::simulated
