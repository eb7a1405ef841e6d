#include "platform/simulated/icon_family.h"

#include "platform/simulated/png_icon.h"

#include <algorithm>
#include <array>
#include <QList>
#include <QtEndian>

namespace zorvane::platform::simulated
{

namespace
{

constexpr qsizetype headerSize = 8;
/** More entries than any icon has sizes; the rest of a hostile file is not looked at. */
constexpr qsizetype entryLimit = 256;

struct Entry {
    QByteArrayView type;
    QByteArrayView image;
};

/** The types whose image is a file of its own. */
constexpr std::array<std::pair<QByteArrayView, int>, 11> fileTypes{
    {{"icp4", 16}, {"icp5", 32}, {"icp6", 64}, {"ic07", 128}, {"ic08", 256}, {"ic09", 512},
        {"ic10", 1024}, {"ic11", 32}, {"ic12", 64}, {"ic13", 256}, {"ic14", 512}}};

/** The older types: colours in one entry, their opacity in another. */
struct ColourType {
    QByteArrayView type;
    QByteArrayView maskType;
    int side;
    /** Bytes without meaning in front of the colours. */
    qsizetype padding;
};
constexpr std::array<ColourType, 4> colourTypes{{{"is32", "s8mk", 16, 0}, {"il32", "l8mk", 32, 0},
    {"ih32", "h8mk", 48, 0}, {"it32", "t8mk", 128, 4}}};

/** One image of a family. */
struct Representation {
    enum class Form { Png, Runs };

    int side;
    Form form;
    QByteArrayView image;
    /** The opacity of an image by runs, a byte a pixel; null if all of it is opaque. */
    QByteArrayView mask;
};

QList<Entry> entriesOf(QByteArrayView file)
{
    QList<Entry> entries;
    if (!file.startsWith("icns"))
        return entries;
    qsizetype position = headerSize;
    while (file.size() - position >= headerSize && entries.size() < entryLimit) {
        const QByteArrayView rest = file.sliced(position);
        const qsizetype length = qFromBigEndian<quint32>(rest.data() + 4);
        if (length < headerSize || length > rest.size())
            break;
        entries.append({rest.first(4), rest.first(length).sliced(headerSize)});
        position += length;
    }
    return entries;
}

/** The image of the first entry of @p type; null if there is none. */
QByteArrayView imageOf(const QList<Entry> &entries, QByteArrayView type)
{
    const auto entry = std::ranges::find(entries, type, &Entry::type);
    return entry == entries.end() ? QByteArrayView() : entry->image;
}

bool suitsBetter(const Representation &a, const Representation &b, int side)
{
    const bool largeEnough = a.side >= side;
    if (largeEnough != (b.side >= side))
        return largeEnough;
    return largeEnough ? a.side < b.side : a.side > b.side;
}

/**
 * Unpacks @p packed: a byte below 128 stands in front of one byte more than its value, any other
 * in front of one byte that is meant as often as its value less 125. Empty unless that makes
 * exactly @p size bytes.
 */
QByteArray unpacked(QByteArrayView packed, qsizetype size)
{
    QByteArray bytes;
    bytes.reserve(size);
    while (!packed.isEmpty()) {
        const auto head = uchar(packed.front());
        const bool isRun = head >= 128;
        const qsizetype taken = isRun ? 1 : head + 1;
        const qsizetype made = isRun ? head - 125 : taken;
        if (packed.size() - 1 < taken || made > size - bytes.size())
            return {};
        if (isRun)
            bytes.append(made, packed[1]);
        else
            bytes.append(packed.sliced(1, taken));
        packed = packed.sliced(1 + taken);
    }
    return bytes.size() == size ? bytes : QByteArray();
}

QImage drawnRuns(const Representation &representation)
{
    const int side = representation.side;
    const qsizetype pixels = qsizetype(side) * side;
    const QByteArrayView mask = representation.mask;
    if (!mask.isNull() && mask.size() != pixels)
        return {};
    const QByteArray colours = unpacked(representation.image, 3 * pixels);
    if (colours.isEmpty())
        return {};
    QImage image(side, side, QImage::Format_ARGB32);
    for (int y = 0; y < side; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const qsizetype i = qsizetype(y) * side + x;
            const auto colour = [&](int plane) { return uchar(colours[plane * pixels + i]); };
            const int opacity = mask.isNull() ? 255 : uchar(mask[i]);
            line[x] = qRgba(colour(0), colour(1), colour(2), opacity);
        }
    }
    return image;
}

/** The images of a family, those that suit @p side best first. */
QList<Representation> representationsOf(QByteArrayView file, int side)
{
    using Form = Representation::Form;
    QList<Representation> result;
    const QList<Entry> entries = entriesOf(file);
    for (const auto &[type, entrySide] : fileTypes) {
        const QByteArrayView image = imageOf(entries, type);
        if (isPng(image))
            result.append({entrySide, Form::Png, image, {}});
    }
    for (const ColourType &colour : colourTypes) {
        const QByteArrayView image = imageOf(entries, colour.type);
        if (image.size() > colour.padding)
            result.append({colour.side, Form::Runs, image.sliced(colour.padding),
                imageOf(entries, colour.maskType)});
    }
    std::ranges::stable_sort(
        result, [side](const auto &a, const auto &b) { return suitsBetter(a, b, side); });
    return result;
}

QImage drawn(const Representation &representation)
{
    if (representation.form == Representation::Form::Runs)
        return drawnRuns(representation);
    return drawnPng(representation.image, representation.side);
}

} // namespace

QImage iconOfFamily(QByteArrayView file, int side)
{
    for (const Representation &representation : representationsOf(file, side)) {
        if (QImage image = drawn(representation); !image.isNull())
            return image;
    }
    return {};
}

} // namespace zorvane::platform::simulated
