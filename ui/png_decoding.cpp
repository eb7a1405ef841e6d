#include "ui/png_decoding.h"

#include <memory>
#include <png.h>
#include <QSysInfo>

namespace zorvane::ui
{

QImage decodePng(const QByteArray &bytes, unsigned largestSide)
{
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, decltype(&png_image_free)> owner(&header, &png_image_free);
    if (png_image_begin_read_from_memory(
            &header, bytes.constData(), static_cast<std::size_t>(bytes.size()))
        == 0)
        return {};
    if (header.width > largestSide || header.height > largestSide)
        return {};

    constexpr bool isLittleEndian = QSysInfo::ByteOrder == QSysInfo::LittleEndian;
    header.format = isLittleEndian ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
    QImage image(
        static_cast<int>(header.width), static_cast<int>(header.height), QImage::Format_ARGB32);
    const auto stride = static_cast<png_int_32>(image.bytesPerLine());
    if (image.isNull()
        || png_image_finish_read(&header, nullptr, image.bits(), stride, nullptr) == 0)
        return {};
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    return image;
}

} // namespace zorvane::ui
