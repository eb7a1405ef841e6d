#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <functional>
#include <QImage>

namespace zorvane::platform::macos
{

/**
 * A transparent picture of @p size pixels, on which @p paint has drawn, premultiplied and in the
 * device's colours; the origin is at its lower left. Null if the system makes no bitmap of it. Any
 * thread.
 */
[[nodiscard]] QImage paintedBitmap(QSize size, const std::function<void(CGContextRef)> &paint);

} // namespace zorvane::platform::macos
