#pragma once

#include <QByteArray>
#include <QImage>

namespace zorvane::platform
{

/**
 * A PNG image, premultiplied. Null if the bytes are none, are damaged, hold much more than the
 * pixels, or a side is longer than @p largestSide; then nothing is allocated for its pixels. Silent
 * whatever the bytes are. Its colour profile is not applied. Any thread.
 *
 * By libpng, not by Qt's reader: that loads the plugins of all other formats first, which costs a
 * cold start more than all the icons of a list, would let each of them look at the bytes, and
 * prints what libpng says of damaged ones.
 */
[[nodiscard]] QImage decodePng(QByteArrayView bytes, unsigned largestSide);

/**
 * The ICC profile in the PNG file @p bytes; empty if there is none, or one that is damaged or
 * longer than real ones. Any thread.
 */
[[nodiscard]] QByteArray colorProfileOfPng(QByteArrayView bytes);

} // namespace zorvane::platform
