#include "inspection/application_icon.h"

#include <QBuffer>
#include <QColorSpace>

namespace zorvane::inspection
{

std::optional<QByteArray> encodedIcon(const QImage &image)
{
    if (image.isNull())
        return std::nullopt;
    QImage square = image;
    if (square.colorSpace().isValid())
        square.convertToColorSpace(QColorSpace::SRgb);
    // Premultiplied before scaling, so that the colour of clear pixels does not bleed into edges.
    square = square.convertToFormat(QImage::Format_RGBA8888_Premultiplied)
                 .scaled(iconSide, iconSide, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // A plain bitmap: neither the source's colour profile nor its texts and resolution.
    const QImage bitmap(square.constBits(), square.width(), square.height(), square.bytesPerLine(),
        square.format());
    QBuffer png;
    if (!png.open(QIODevice::WriteOnly) || !bitmap.save(&png, "PNG"))
        return std::nullopt;
    return png.data();
}

} // namespace zorvane::inspection
