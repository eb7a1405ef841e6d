#include "platform/simulated/png_icon.h"

#include "platform/png_image.h"

#include <QColorSpace>

namespace zorvane::platform::simulated
{

bool isPng(QByteArrayView bytes)
{
    return bytes.startsWith("\x89PNG\r\n");
}

QImage drawnPng(QByteArrayView bytes, int largestSide)
{
    QImage image = decodePng(bytes, unsigned(largestSide));
    if (image.isNull())
        return image;
    if (const QByteArray profile = colorProfileOfPng(bytes); !profile.isEmpty())
        image.setColorSpace(QColorSpace::fromIccProfile(profile));
    return image;
}

} // namespace zorvane::platform::simulated
