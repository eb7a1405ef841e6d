#pragma once

#include <QByteArrayView>
#include <QImage>

/**
 * @file
 * The container of icons in many sizes (".icns"): the text "icns" and the file's length, then
 * entries of a four-letter type, a length that counts these eight bytes, and an image. All numbers
 * are big-endian with 32 bits. An image is a file of its own, or in the older types runs of equal
 * and of differing bytes, the red of all pixels first, then the green, then the blue; their opacity
 * is another entry. Written from the format's public descriptions. Pure; any thread.
 */
namespace zorvane::platform::simulated
{

/**
 * The image of the icon family @p file that suits @p side pixels best, at its own size: the
 * smallest that is large enough, else the next larger ones, else the largest of the smaller ones.
 * Images that are damaged, in a form not named above, or larger than their type says are passed
 * over, and so is every entry but the first of a type; a damaged entry ends the family. A null
 * image if none is left.
 */
[[nodiscard]] QImage iconOfFamily(QByteArrayView file, int side);

} // namespace zorvane::platform::simulated
