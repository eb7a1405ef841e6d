#include "platform/png_image.h"

#include <array>
#include <memory>
#include <png.h>
#include <QScopeGuard>
#include <QSysInfo>
#include <QtEndian>
#include <zlib.h>

namespace zorvane::platform
{

namespace
{

constexpr qsizetype signatureSize = 8;
/** A chunk's length and type; a check sum follows its content. */
constexpr qsizetype chunkHeaderSize = 8;
constexpr qsizetype checkSumSize = 4;
/** Profiles of displays take a few kilobytes, those of printers up to half a megabyte. */
constexpr qsizetype profileSizeLimit = qsizetype{1024} * 1024;
/** A file of this size cannot unpack to more than takes a moment. */
constexpr qsizetype harmlessSize = qsizetype{128} * 1024;

/** The content of an iCCP chunk: a name, a zero byte, the compression's number, the profile. */
QByteArray uncompressedProfile(QByteArrayView content)
{
    const qsizetype nameSize = content.indexOf('\0');
    if (nameSize < 0 || content.size() < nameSize + 2 || content[nameSize + 1] != 0)
        return {};
    const QByteArrayView packed = content.sliced(nameSize + 2);
    QByteArray profile(profileSizeLimit, Qt::Uninitialized);
    auto size = uLongf(profile.size());
    if (uncompress(reinterpret_cast<Bytef *>(profile.data()), &size,
            reinterpret_cast<const Bytef *>(packed.data()), uLong(packed.size()))
        != Z_OK)
        return {};
    profile.resize(qsizetype(size));
    return profile;
}

/** Calls @p visit with type and content of one chunk after the other, until it says false. */
template <typename Visit>
void forEachChunk(QByteArrayView bytes, Visit visit)
{
    qsizetype position = signatureSize;
    while (bytes.size() - position >= chunkHeaderSize) {
        const QByteArrayView rest = bytes.sliced(position);
        const qsizetype length = qFromBigEndian<quint32>(rest.data());
        if (length > rest.size() - chunkHeaderSize
            || !visit(rest.sliced(4, 4), rest.sliced(chunkHeaderSize, length)))
            return;
        position += chunkHeaderSize + length + checkSumSize;
    }
}

/** True if the compressed pixels become more than @p needed bytes. */
bool hasSurplus(QByteArrayView bytes, qsizetype needed)
{
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK)
        return true;
    const auto end = qScopeGuard([&stream] { inflateEnd(&stream); });
    std::array<Bytef, 65536> unpacked{};
    const auto total = [&stream] { return static_cast<qsizetype>(stream.total_out); };
    forEachChunk(bytes, [&](QByteArrayView type, QByteArrayView content) {
        if (type != "IDAT")
            return true;
        // The library's interface is not const, but leaves its input alone.
        stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(content.data()));
        stream.avail_in = static_cast<uInt>(content.size());
        int status = Z_OK;
        do {
            stream.next_out = unpacked.data();
            stream.avail_out = static_cast<uInt>(unpacked.size());
            status = inflate(&stream, Z_NO_FLUSH);
        } while (status == Z_OK && stream.avail_out == 0 && total() <= needed);
        return (status == Z_OK || status == Z_BUF_ERROR) && total() <= needed;
    });
    return total() > needed;
}

} // namespace

QImage decodePng(QByteArrayView bytes, unsigned largestSide)
{
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, decltype(&png_image_free)> owner(&header, &png_image_free);
    if (png_image_begin_read_from_memory(
            &header, bytes.data(), static_cast<std::size_t>(bytes.size()))
        == 0)
        return {};
    if (header.width > largestSide || header.height > largestSide)
        return {};
    // The library unpacks what comes behind the last pixel as well: a thousand bytes for each one.
    const qsizetype longestRow = 8 * qsizetype{header.width} + 1;
    if (bytes.size() > harmlessSize && hasSurplus(bytes, 2 * longestRow * header.height))
        return {};

    constexpr bool isLittleEndian = QSysInfo::ByteOrder == QSysInfo::LittleEndian;
    header.format = isLittleEndian ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
    // The library takes 16 bits a colour for linear light otherwise, which icons never mean.
    header.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    QImage image(
        static_cast<int>(header.width), static_cast<int>(header.height), QImage::Format_ARGB32);
    const auto stride = static_cast<png_int_32>(image.bytesPerLine());
    if (image.isNull()
        || png_image_finish_read(&header, nullptr, image.bits(), stride, nullptr) == 0)
        return {};
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    return image;
}

QByteArray colorProfileOfPng(QByteArrayView bytes)
{
    QByteArray profile;
    forEachChunk(bytes, [&profile](QByteArrayView type, QByteArrayView content) {
        if (type == "iCCP")
            profile = uncompressedProfile(content);
        return type != "iCCP" && type != "IDAT";
    });
    return profile;
}

} // namespace zorvane::platform
