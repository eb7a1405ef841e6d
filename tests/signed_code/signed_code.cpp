#include "tests/signed_code/signed_code.h"

#include <QtEndian>

namespace zorvane::tests
{

using platform::ByteOrder;

namespace
{

constexpr qsizetype sliceAlignment = 4096;

QByteArray big(std::uint32_t value)
{
    return number32(value, ByteOrder::Big);
}

std::uint32_t sizeOf(const QByteArray &bytes)
{
    return static_cast<std::uint32_t>(bytes.size());
}

std::uint32_t directoryHeaderSize(std::uint32_t version)
{
    if (version >= 0x20400)
        return 88;
    if (version >= 0x20300)
        return 64;
    if (version >= 0x20200)
        return 52;
    return version >= 0x20100 ? 48 : 44;
}

std::uint32_t neededSlots(const DirectoryForm &form)
{
    const std::uint64_t limit = form.longCodeLimit != 0 ? form.longCodeLimit : form.codeLimit;
    if (form.pageShift == 0)
        return limit > 0 ? 1 : 0;
    if (limit == 0)
        return 0;
    return form.pageShift < 64 ? static_cast<std::uint32_t>(((limit - 1) >> form.pageShift) + 1)
                               : 1;
}

} // namespace

QByteArray number32(std::uint32_t value, ByteOrder order)
{
    const std::uint32_t stored
        = order == ByteOrder::Big ? qToBigEndian(value) : qToLittleEndian(value);
    return {reinterpret_cast<const char *>(&stored), sizeof(stored)};
}

QByteArray number64(std::uint64_t value, ByteOrder order)
{
    const auto stored = order == ByteOrder::Big ? qToBigEndian(value) : qToLittleEndian(value);
    return {reinterpret_cast<const char *>(&stored), sizeof(stored)};
}

QByteArray codeDirectory(const DirectoryForm &form)
{
    const std::uint32_t headerSize = directoryHeaderSize(form.version);
    QByteArray texts = form.identifier + '\0';
    const std::uint32_t teamOffset = form.team ? headerSize + sizeOf(texts) : 0;
    if (form.team)
        texts += *form.team + '\0';
    const std::uint32_t slotCount = form.codeSlotCount.value_or(neededSlots(form));
    const std::uint32_t hashes = headerSize + sizeOf(texts) + form.specialSlotCount * form.hashSize;
    const std::uint32_t length = hashes + neededSlots(form) * form.hashSize;

    QByteArray result = big(form.magic) + big(form.length.value_or(length)) + big(form.version)
        + big(2) + big(form.hashOffset.value_or(hashes))
        + big(form.identifierOffset.value_or(headerSize)) + big(form.specialSlotCount)
        + big(slotCount) + big(form.codeLimit);
    result += static_cast<char>(form.hashSize);
    result += static_cast<char>(form.hashType);
    result += '\0';
    result += static_cast<char>(form.pageShift);
    result += big(0);
    if (form.version >= 0x20100)
        result += big(0);
    if (form.version >= 0x20200)
        result += big(form.teamOffset.value_or(teamOffset));
    if (form.version >= 0x20300)
        result += big(0) + number64(form.longCodeLimit, ByteOrder::Big);
    if (form.version >= 0x20400)
        result += QByteArray(24, '\0');
    return (result + texts).leftJustified(length, '\0');
}

QByteArray blob(std::uint32_t magic, const QByteArray &content)
{
    return big(magic) + big(8 + sizeOf(content)) + content;
}

QByteArray cmsBlob()
{
    return blob(0xFADE0B01, {});
}

QByteArray superBlob(const SuperBlobForm &form)
{
    QByteArray index;
    QByteArray blobs;
    const auto indexEnd = static_cast<std::uint32_t>(12 + 8 * form.entries.size());
    for (const IndexEntry &entry : form.entries) {
        index += big(entry.type) + big(entry.offset.value_or(indexEnd + sizeOf(blobs)));
        blobs += entry.blob;
    }
    const std::uint32_t length = indexEnd + sizeOf(blobs);
    const auto count = static_cast<std::uint32_t>(form.entries.size());
    return big(form.magic) + big(form.length.value_or(length)) + big(form.count.value_or(count))
        + index + blobs;
}

QByteArray signature(const DirectoryForm &form, bool withCms)
{
    SuperBlobForm superBlobForm{{{slotCodeDirectory, codeDirectory(form)}}};
    if (withCms)
        superBlobForm.entries.append({slotCms, cmsBlob()});
    return superBlob(superBlobForm);
}

QByteArray loadCommand(std::uint32_t command, std::uint32_t size, ByteOrder order)
{
    return (number32(command, order) + number32(size, order)).leftJustified(size, '\0');
}

QByteArray machO(const ImageForm &form)
{
    const auto number = [&](std::uint32_t value) { return number32(value, form.order); };
    const std::uint32_t headerSize = form.is64Bit ? 32 : 28;
    const QByteArray signature = form.signature.value_or(QByteArray());
    const std::uint32_t commandsSize
        = sizeOf(form.commands) + (form.signature ? form.signatureCommandSize : 0);
    const std::uint32_t dataOffset = headerSize + commandsSize;

    QByteArray result = number(form.is64Bit ? 0xFEEDFACF : 0xFEEDFACE) + number(form.cpuType)
        + number(form.cpuSubtype) + number(form.fileType) + number(form.signature ? 1 : 0)
        + number(form.commandsSize.value_or(commandsSize)) + number(0);
    if (form.is64Bit)
        result += number(0);
    result += form.commands;
    if (form.signature)
        result += (number(0x1D) + number(form.signatureCommandSize)
            + number(form.dataOffset.value_or(dataOffset))
            + number(form.dataSize.value_or(sizeOf(signature))))
                      .leftJustified(form.signatureCommandSize, 0, true);
    return result + signature;
}

QByteArray universal(const UniversalForm &form)
{
    const auto count = static_cast<std::uint32_t>(form.slices.size());
    QByteArray result = big(form.magic) + big(form.count.value_or(count));
    QByteArray bodies;
    qsizetype place = sliceAlignment;
    for (const SliceForm &slice : form.slices) {
        result += big(slice.cpuType) + big(slice.cpuSubtype)
            + big(slice.offset.value_or(static_cast<std::uint32_t>(place)))
            + big(sizeOf(slice.bytes)) + big(12);
        const qsizetype room
            = (slice.bytes.size() + sliceAlignment - 1) / sliceAlignment * sliceAlignment;
        bodies += slice.bytes.leftJustified(room, '\0');
        place += room;
    }
    return result.leftJustified(sliceAlignment, '\0') + bodies;
}

} // namespace zorvane::tests
