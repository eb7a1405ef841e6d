#include "platform/macos/bitmap.h"

#include "platform/macos/core_foundation.h"

namespace zorvane::platform::macos
{

static_assert(kCGImageAlphaPremultipliedLast == 1);
static_assert(kCGInterpolationHigh == 3);

QImage paintedBitmap(QSize size, const std::function<void(CGContextRef)> &paint)
{
    QImage image(size, QImage::Format_RGBA8888_Premultiplied);
    image.fill(Qt::transparent);
    const CoreFoundationPointer<CGColorSpaceRef> colours(CGColorSpaceCreateDeviceRGB());
    const CoreFoundationPointer<CGContextRef> context(CGBitmapContextCreate(image.bits(),
        static_cast<std::size_t>(image.width()), static_cast<std::size_t>(image.height()), 8,
        static_cast<std::size_t>(image.bytesPerLine()), colours.get(),
        static_cast<CGBitmapInfo>(kCGImageAlphaPremultipliedLast)));
    if (!context)
        return {};
    CGContextSetInterpolationQuality(context.get(), kCGInterpolationHigh);
    paint(context.get());
    return image;
}

} // namespace zorvane::platform::macos
