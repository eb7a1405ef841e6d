#include "platform/png_image.h"

#include <memory>
#include <png.h>
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
    qsizetype position = signatureSize;
    while (bytes.size() - position >= chunkHeaderSize) {
        const QByteArrayView rest = bytes.sliced(position);
        const qsizetype length = qFromBigEndian<quint32>(rest.data());
        const QByteArrayView type = rest.sliced(4, 4);
        if (length > rest.size() - chunkHeaderSize || type == "IDAT")
            return {};
        if (type == "iCCP")
            return uncompressedProfile(rest.sliced(chunkHeaderSize, length));
        position += chunkHeaderSize + length + checkSumSize;
    }
    return {};
}

} // namespace zorvane::platform
