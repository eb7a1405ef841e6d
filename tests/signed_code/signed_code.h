#pragma once

#include "platform/byte_order.h"

#include <optional>
#include <QByteArray>
#include <QList>

/**
 * @file
 * Builds Mach-O files and code signatures, sound by default; each field that a test wants wrong can
 * be set by itself. Code, hashes and the like are zeros.
 */
namespace zorvane::tests
{

inline constexpr std::uint32_t cpuArm64 = 0x0100000C;
inline constexpr std::uint32_t cpuX86_64 = 0x01000007;
inline constexpr std::uint32_t cpuPowerPc = 18;

inline constexpr std::uint8_t hashSha1 = 1;
inline constexpr std::uint8_t hashSha256 = 2;
inline constexpr std::uint8_t hashSha256Truncated = 3;
inline constexpr std::uint8_t hashSha384 = 4;

inline constexpr std::uint32_t slotCodeDirectory = 0;
inline constexpr std::uint32_t slotRequirements = 2;
inline constexpr std::uint32_t slotAlternate = 0x1000;
inline constexpr std::uint32_t slotCms = 0x10000;

/** A code directory's fields; those without a value are computed. */
struct DirectoryForm {
    QByteArray identifier = "com.example.Tool";
    std::optional<QByteArray> team = std::nullopt;
    std::uint8_t hashType = hashSha256;
    std::uint32_t version = 0x20400;
    std::uint32_t magic = 0xFADE0C02;
    std::uint32_t codeLimit = 10000;
    std::uint64_t longCodeLimit = 0;
    std::uint8_t pageShift = 12;
    std::uint8_t hashSize = 32;
    std::uint32_t specialSlotCount = 2;
    std::optional<std::uint32_t> codeSlotCount = std::nullopt;
    std::optional<std::uint32_t> hashOffset = std::nullopt;
    std::optional<std::uint32_t> identifierOffset = std::nullopt;
    std::optional<std::uint32_t> teamOffset = std::nullopt;
    std::optional<std::uint32_t> length = std::nullopt;
};

[[nodiscard]] QByteArray codeDirectory(const DirectoryForm &form = {});

/** A blob of the given magic around @p content. */
[[nodiscard]] QByteArray blob(std::uint32_t magic, const QByteArray &content);
/** The part for a cryptographic signature, empty as ad-hoc signing leaves it. */
[[nodiscard]] QByteArray cmsBlob();

struct IndexEntry {
    std::uint32_t type;
    QByteArray blob;
    /** Written instead of the blob's true offset. */
    std::optional<std::uint32_t> offset = std::nullopt;
};

struct SuperBlobForm {
    QList<IndexEntry> entries;
    std::uint32_t magic = 0xFADE0CC0;
    std::optional<std::uint32_t> count = std::nullopt;
    std::optional<std::uint32_t> length = std::nullopt;
};

[[nodiscard]] QByteArray superBlob(const SuperBlobForm &form);
/** A whole signature of one code directory, with an empty cryptographic signature if wanted. */
[[nodiscard]] QByteArray signature(const DirectoryForm &form = {}, bool withCms = true);

struct ImageForm {
    /** No signature command if absent. */
    std::optional<QByteArray> signature = std::nullopt;
    bool is64Bit = true;
    platform::ByteOrder order = platform::ByteOrder::Little;
    std::uint32_t cpuType = cpuArm64;
    std::uint32_t cpuSubtype = 0;
    std::uint32_t fileType = 2;
    /** Raw load commands in front of the signature command. */
    QByteArray commands = {};
    std::uint32_t signatureCommandSize = 16;
    std::optional<std::uint32_t> dataOffset = std::nullopt;
    std::optional<std::uint32_t> dataSize = std::nullopt;
    std::optional<std::uint32_t> commandsSize = std::nullopt;
};

[[nodiscard]] QByteArray machO(const ImageForm &form = {});
/** One load command: its header and as many zeros as @p size wants beyond it. */
[[nodiscard]] QByteArray loadCommand(std::uint32_t command, std::uint32_t size,
    platform::ByteOrder order = platform::ByteOrder::Little);

struct SliceForm {
    std::uint32_t cpuType;
    std::uint32_t cpuSubtype;
    QByteArray bytes;
    std::optional<std::uint32_t> offset = std::nullopt;
};

struct UniversalForm {
    QList<SliceForm> slices;
    std::uint32_t magic = 0xCAFEBABE;
    std::optional<std::uint32_t> count = std::nullopt;
};

/** A universal file; slices begin at multiples of 4096. */
[[nodiscard]] QByteArray universal(const UniversalForm &form);

/** @p value in four or eight bytes. */
[[nodiscard]] QByteArray number32(std::uint32_t value, platform::ByteOrder order);
[[nodiscard]] QByteArray number64(std::uint64_t value, platform::ByteOrder order);

} // namespace zorvane::tests
