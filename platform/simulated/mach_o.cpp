#include "platform/simulated/mach_o.h"

#include <algorithm>
#include <vector>

namespace zorvane::platform::simulated
{

namespace
{

constexpr std::uint32_t universalMagic = 0xCAFEBABE;
constexpr std::uint64_t universalHeaderSize = 8;
constexpr std::uint64_t sliceEntrySize = 20;
constexpr std::uint32_t sliceCountLimit = 100;

constexpr std::uint32_t arm64 = 0x0100000C;

constexpr std::uint64_t header32Size = 28;
constexpr std::uint64_t header64Size = 32;
constexpr std::uint64_t commandHeaderSize = 8;
constexpr std::uint64_t signatureCommandSize = 16;
constexpr std::uint32_t codeSignatureCommand = 0x1D;
// Real programs have a few thousand bytes of load commands.
constexpr std::uint32_t commandsSizeLimit = 1024 * 1024;

/** How an image's numbers are to be read, and where its load commands begin. */
struct ImageForm {
    ByteOrder order;
    std::uint64_t headerSize;
};

struct Slice {
    std::uint32_t cpuType;
    std::uint32_t cpuSubtype;
    std::uint32_t offset;
};

std::optional<ImageForm> imageForm(const ByteRange &image)
{
    switch (image.uint32At(0, ByteOrder::Little).value_or(0)) {
    case 0xFEEDFACE:
        return ImageForm{ByteOrder::Little, header32Size};
    case 0xFEEDFACF:
        return ImageForm{ByteOrder::Little, header64Size};
    case 0xCEFAEDFE:
        return ImageForm{ByteOrder::Big, header32Size};
    case 0xCFFAEDFE:
        return ImageForm{ByteOrder::Big, header64Size};
    default:
        return std::nullopt;
    }
}

bool isUniversal(const ByteRange &file)
{
    return file.uint32At(0, ByteOrder::Big) == universalMagic;
}

bool isLoadedFileType(std::uint32_t fileType)
{
    switch (fileType) {
    case 2: // MH_EXECUTE
    case 5: // MH_PRELOAD
    case 6: // MH_DYLIB
    case 7: // MH_DYLINKER
    case 8: // MH_BUNDLE
    case 11: // MH_KEXT_BUNDLE
        return true;
    default:
        return false;
    }
}

std::optional<Slice> sliceAt(const ByteRange &file, std::uint64_t index)
{
    const std::uint64_t entry = universalHeaderSize + index * sliceEntrySize;
    if (!file.part(entry, sliceEntrySize))
        return std::nullopt;
    const auto cpuType = file.uint32At(entry, ByteOrder::Big);
    const auto cpuSubtype = file.uint32At(entry + 4, ByteOrder::Big);
    const auto offset = file.uint32At(entry + 8, ByteOrder::Big);
    if (!cpuType || !cpuSubtype || !offset)
        return std::nullopt;
    return Slice{*cpuType, *cpuSubtype, *offset};
}

std::optional<std::vector<Slice>> readSlices(const ByteRange &file)
{
    const auto count = file.uint32At(4, ByteOrder::Big);
    if (!count || *count > sliceCountLimit)
        return std::nullopt;
    std::vector<Slice> slices;
    slices.reserve(*count + 1);
    for (std::uint32_t index = 0; index <= *count; ++index) {
        const auto slice = sliceAt(file, index);
        if (!slice)
            return std::nullopt;
        // Some linkers hide an arm64 slice from older systems behind the counted ones.
        if (index < *count || slice->cpuType == arm64)
            slices.push_back(*slice);
    }
    return slices;
}

bool haveEqualOffsets(std::vector<Slice> slices)
{
    std::ranges::sort(slices, {}, &Slice::offset);
    return std::ranges::adjacent_find(slices, {}, &Slice::offset) != slices.end();
}

const Slice &bestSlice(const std::vector<Slice> &slices)
{
    const auto native = std::ranges::find_if(
        slices, [](const Slice &slice) { return slice.cpuType == arm64 && slice.cpuSubtype == 0; });
    if (native != slices.end())
        return *native;
    const auto variant = std::ranges::find(slices, arm64, &Slice::cpuType);
    return variant != slices.end() ? *variant : slices.front();
}

} // namespace

bool isMachO(const ByteRange &file)
{
    std::optional<ByteRange> image = file;
    if (isUniversal(file)) {
        const auto first = sliceAt(file, 0);
        image = first ? file.from(first->offset) : std::nullopt;
    }
    const auto form = image ? imageForm(*image) : std::nullopt;
    return form && image->size() >= header32Size
        && isLoadedFileType(image->uint32At(12, form->order).value_or(0));
}

std::optional<ByteRange> representativeImage(const ByteRange &file)
{
    if (!isUniversal(file))
        return file;
    const auto slices = readSlices(file);
    if (!slices || slices->empty() || haveEqualOffsets(*slices))
        return std::nullopt;
    return file.from(bestSlice(*slices).offset);
}

Reading<ByteRange> embeddedSignature(const ByteRange &image)
{
    const auto form = imageForm(image);
    if (!form)
        return Damaged();
    const auto size = image.uint32At(20, form->order);
    if (!size || *size > commandsSizeLimit)
        return Damaged();
    const auto commands = image.part(form->headerSize, *size);
    if (!commands)
        return Damaged();
    for (std::uint64_t offset = 0; offset < commands->size();) {
        const auto command = commands->uint32At(offset, form->order);
        const auto commandSize = commands->uint32At(offset + 4, form->order);
        if (!command || !commandSize || *commandSize < commandHeaderSize
            || !commands->part(offset, *commandSize))
            return Damaged();
        if (*command == codeSignatureCommand) {
            const auto dataOffset = commands->uint32At(offset + 8, form->order);
            const auto dataSize = commands->uint32At(offset + 12, form->order);
            if (*commandSize < signatureCommandSize || !dataOffset || !dataSize)
                return Damaged();
            const auto data = image.part(*dataOffset, *dataSize);
            return data ? Reading<ByteRange>(*data) : Damaged();
        }
        offset += *commandSize;
    }
    return Absent();
}

} // namespace zorvane::platform::simulated
