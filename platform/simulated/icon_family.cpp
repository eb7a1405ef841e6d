#include "platform/simulated/icon_family.h"

#include <algorithm>
#include <array>
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
    QByteArrayView whole;
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
};
constexpr std::array<ColourType, 4> colourTypes{
    {{"is32", "s8mk", 16}, {"il32", "l8mk", 32}, {"ih32", "h8mk", 48}, {"it32", "t8mk", 128}}};

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
        entries.append({rest.first(4), rest.first(length), rest.first(length).sliced(headerSize)});
        position += length;
    }
    return entries;
}

/** A family of these entries alone. */
QByteArray familyOf(std::initializer_list<QByteArrayView> entries)
{
    QByteArray content;
    for (const QByteArrayView entry : entries)
        content.append(entry);
    QByteArray file("icns\0\0\0\0", headerSize);
    qToBigEndian(quint32(headerSize + content.size()), file.data() + 4);
    return file + content;
}

bool suitsBetter(const IconRepresentation &a, const IconRepresentation &b, int side)
{
    const bool largeEnough = a.side >= side;
    if (largeEnough != (b.side >= side))
        return largeEnough;
    return largeEnough ? a.side < b.side : a.side > b.side;
}

} // namespace

QList<IconRepresentation> iconRepresentations(const QByteArray &file, int side)
{
    QList<IconRepresentation> result;
    const QList<Entry> entries = entriesOf(file);
    for (const Entry &entry : entries) {
        for (const auto &[type, entrySide] : fileTypes) {
            if (entry.type == type && entry.image.startsWith("\x89PNG\r\n"))
                result.append({entrySide, "png", entry.image.toByteArray()});
        }
        for (const ColourType &colour : colourTypes) {
            if (entry.type != colour.type)
                continue;
            const auto mask = std::ranges::find(entries, colour.maskType, &Entry::type);
            const QByteArrayView maskEntry = mask == entries.end() ? QByteArrayView() : mask->whole;
            result.append({colour.side, "icns", familyOf({entry.whole, maskEntry})});
        }
    }
    std::ranges::stable_sort(
        result, [side](const auto &a, const auto &b) { return suitsBetter(a, b, side); });
    return result;
}

} // namespace zorvane::platform::simulated
