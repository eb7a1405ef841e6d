#include "platform/simulated/embedded_signature.h"

#include "platform/simulated/mach_o.h"

#include <algorithm>

namespace zorvane::platform::simulated
{

namespace
{

constexpr std::uint32_t superBlobMagic = 0xFADE0CC0;
constexpr std::uint32_t wrapperMagic = 0xFADE0B01;
constexpr std::uint64_t superBlobHeaderSize = 12;
constexpr std::uint64_t indexEntrySize = 8;
constexpr std::uint64_t blobHeaderSize = 8;
// Real signatures have about five entries.
constexpr std::uint32_t entryLimit = 4096;

constexpr std::uint32_t codeDirectoryType = 0;
constexpr std::uint32_t firstAlternateType = 0x1000;
constexpr std::uint32_t cryptographicSignatureType = 0x10000;

std::optional<ByteRange> blobAt(const ByteRange &superBlob, std::uint32_t offset)
{
    if (!superBlob.part(offset, blobHeaderSize))
        return std::nullopt;
    const auto length = superBlob.uint32At(std::uint64_t{offset} + 4, ByteOrder::Big);
    return length ? superBlob.part(offset, *length) : std::nullopt;
}

} // namespace

std::optional<EmbeddedSignature> EmbeddedSignature::read(const ByteRange &bytes)
{
    if (bytes.uint32At(0, ByteOrder::Big) != superBlobMagic)
        return std::nullopt;
    const auto superBlob = bytes.part(0, bytes.uint32At(4, ByteOrder::Big).value_or(0));
    const auto count = superBlob ? superBlob->uint32At(8, ByteOrder::Big) : std::nullopt;
    if (!count || *count > entryLimit)
        return std::nullopt;
    const std::uint64_t indexEnd = superBlobHeaderSize + *count * indexEntrySize;
    if (!superBlob->part(0, indexEnd))
        return std::nullopt;

    std::vector<Entry> entries;
    entries.reserve(*count);
    for (std::uint64_t place = superBlobHeaderSize; place < indexEnd; place += indexEntrySize) {
        const auto type = superBlob->uint32At(place, ByteOrder::Big);
        const auto offset = superBlob->uint32At(place + 4, ByteOrder::Big);
        if (!type || !offset)
            return std::nullopt;
        Entry entry{*type, std::nullopt};
        if (*offset != 0) {
            entry.blob = *offset >= indexEnd ? blobAt(*superBlob, *offset) : std::nullopt;
            if (!entry.blob)
                return std::nullopt;
        }
        entries.push_back(entry);
    }
    return EmbeddedSignature(std::move(entries));
}

EmbeddedSignature::EmbeddedSignature(std::vector<Entry> entries)
    : m_entries(std::move(entries))
{
}

std::optional<ByteRange> EmbeddedSignature::firstBlob(std::uint32_t type) const
{
    const auto entry = std::ranges::find(m_entries, type, &Entry::type);
    return entry != m_entries.end() ? entry->blob : std::nullopt;
}

Reading<CodeDirectory> EmbeddedSignature::codeDirectory(unsigned index)
{
    const auto blob = firstBlob(index == 0 ? codeDirectoryType : firstAlternateType + (index - 1));
    if (!blob)
        return Absent();
    auto directory = readCodeDirectory(*blob);
    if (!directory)
        return Damaged();
    return std::move(*directory);
}

bool EmbeddedSignature::hasCryptographicSignature()
{
    const auto blob = firstBlob(cryptographicSignatureType);
    return blob && blob->uint32At(0, ByteOrder::Big) == wrapperMagic;
}

std::optional<Reading<SigningInformation>> readEmbeddedSignature(const ByteRange &file)
{
    const auto image = representativeImage(file);
    if (!image)
        return std::nullopt;
    const auto bytes = embeddedSignature(*image);
    if (std::holds_alternative<Absent>(bytes))
        return Absent();
    const auto *range = std::get_if<ByteRange>(&bytes);
    auto signature = range != nullptr ? EmbeddedSignature::read(*range) : std::nullopt;
    if (!signature)
        return Damaged();
    return readSignature(*signature);
}

} // namespace zorvane::platform::simulated
