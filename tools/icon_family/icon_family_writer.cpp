#include "tools/icon_family/icon_family_writer.h"

#include <array>
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>

namespace zorvane::tools
{

namespace
{

struct PngType {
    const char *type;
    int side;
};
constexpr std::array<PngType, 8> pngTypes{{{"ic11", 32}, {"ic12", 64}, {"ic07", 128}, {"ic13", 256},
    {"ic08", 256}, {"ic14", 512}, {"ic09", 512}, {"ic10", 1024}}};

/**
 * The two smallest at one pixel a point. Their newer types take a PNG too, but not every version of
 * the system draws that in an application's icon; colours and opacity apart are drawn by all.
 */
struct RunsType {
    const char *type;
    const char *maskType;
    int side;
};
constexpr std::array<RunsType, 2> runsTypes{{{"is32", "s8mk", 16}, {"il32", "l8mk", 32}}};

QImage drawn(QSvgRenderer &picture, int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture.render(&painter);
    return image;
}

QByteArray number(qsizetype value)
{
    QByteArray bytes(4, 0);
    qToBigEndian(quint32(value), bytes.data());
    return bytes;
}

QByteArray entry(const char *type, const QByteArray &content)
{
    return type + number(content.size() + 8) + content;
}

QByteArray png(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/** @p bytes as runs of up to 128 differing ones, each behind its length less one. */
QByteArray inRuns(const QByteArray &bytes)
{
    constexpr qsizetype longest = 128;
    QByteArray runs;
    for (qsizetype start = 0; start < bytes.size(); start += longest) {
        const QByteArray run = bytes.mid(start, longest);
        runs += char(run.size() - 1);
        runs += run;
    }
    return runs;
}

QByteArray runsEntries(const RunsType &type, const QImage &drawing)
{
    const QImage image = drawing.convertToFormat(QImage::Format_ARGB32);
    QByteArray red;
    QByteArray green;
    QByteArray blue;
    QByteArray opacity;
    for (int y = 0; y < type.side; ++y) {
        for (int x = 0; x < type.side; ++x) {
            const QRgb colour = image.pixel(x, y);
            red += char(qRed(colour));
            green += char(qGreen(colour));
            blue += char(qBlue(colour));
            opacity += char(qAlpha(colour));
        }
    }
    return entry(type.type, inRuns(red) + inRuns(green) + inRuns(blue))
        + entry(type.maskType, opacity);
}

} // namespace

QList<int> iconFamilySides()
{
    return {16, 32, 64, 128, 256, 512, 1024};
}

QByteArray iconFamilyOf(const QByteArray &svg)
{
    QSvgRenderer picture(svg);
    if (!picture.isValid())
        return {};
    QByteArray entries;
    for (const RunsType &type : runsTypes)
        entries += runsEntries(type, drawn(picture, type.side));
    for (const PngType &type : pngTypes)
        entries += entry(type.type, png(drawn(picture, type.side)));
    return entry("icns", entries);
}

} // namespace zorvane::tools
