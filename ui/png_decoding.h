#pragma once

#include <QByteArray>
#include <QImage>

namespace zorvane::ui
{

/**
 * A PNG image, premultiplied. Null if the bytes are none, are damaged, or a side is longer than
 * `largestSide`; then nothing is allocated for its pixels.
 *
 * By libpng, not by Qt's reader: that loads the plugins of all other formats first, which costs a
 * cold start more than all the icons of a list, and would let each of them look at the bytes.
 */
[[nodiscard]] QImage decodePng(const QByteArray &bytes, unsigned largestSide);

} // namespace zorvane::ui
