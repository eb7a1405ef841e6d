#pragma once

#include <QByteArray>
#include <QList>

/**
 * @file
 * The container of icons in many sizes (".icns"): the text "icns" and the file's length, then
 * entries of a four-letter type, a length that counts these eight bytes, and an image. All numbers
 * are big-endian with 32 bits. Written from the format's public descriptions. Pure functions.
 */
namespace zorvane::platform::simulated
{

/** One image of an icon family, in a form that Qt's readers take. */
struct IconRepresentation {
    /** Width and height in pixels. */
    int side = 0;
    /** The format that Qt reads it by: "png" or "icns". */
    QByteArray format;
    QByteArray bytes;
};

/**
 * The images of the icon family @p file, those that suit @p side pixels best first: the smallest
 * that is large enough, the larger ones, then the smaller ones. Images in forms that Qt does not
 * read are left out; a damaged entry ends the list.
 */
[[nodiscard]] QList<IconRepresentation> iconRepresentations(const QByteArray &file, int side);

} // namespace zorvane::platform::simulated
