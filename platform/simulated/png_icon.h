#pragma once

#include <QByteArrayView>
#include <QImage>

namespace zorvane::platform::simulated
{

/** True if @p bytes begin like a PNG file. */
[[nodiscard]] bool isPng(QByteArrayView bytes);

/**
 * A PNG file's image with the colour space that it names. Null if the bytes are none, are damaged,
 * or a side is longer than @p largestSide pixels. Any thread.
 */
[[nodiscard]] QImage drawnPng(QByteArrayView bytes, int largestSide);

} // namespace zorvane::platform::simulated
