#include "platform/simulated/icon_family.h"
#include "tests/bundle_files/bundle_files.h"

#include <QColorSpace>
#include <QRandomGenerator>
#include <QtEndian>
#include <QTest>
#include <zlib.h>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;
using namespace zorvane::tests;

namespace
{

/** @p count bytes of one value, as runs of the older icon types. */
QByteArray run(int count, char value)
{
    QByteArray bytes;
    for (; count > 0; count -= 130)
        bytes += QByteArray(1, char(std::min(count, 130) + 125)) + value;
    return bytes;
}

using Entries = QList<std::pair<QByteArray, QByteArray>>;

constexpr int pixels16 = 16 * 16;

/** The colours of @p side by @p side red pixels, by runs. */
QByteArray redRuns(int side)
{
    const int pixels = side * side;
    return run(pixels, '\xFF') + run(pixels, 0) + run(pixels, 0);
}

QImage iconOf(const Entries &entries)
{
    return iconOfFamily(iconFamily(entries), 128);
}

QByteArray bigEndian(quint32 value)
{
    const quint32 swapped = qToBigEndian(value);
    return {reinterpret_cast<const char *>(&swapped), sizeof swapped};
}

QByteArray pngChunk(const QByteArray &type, const QByteArray &content)
{
    const QByteArray checked = type + content;
    const auto sum = crc32(
        0, reinterpret_cast<const Bytef *>(checked.constData()), static_cast<uInt>(checked.size()));
    return bigEndian(static_cast<quint32>(content.size())) + checked
        + bigEndian(static_cast<quint32>(sum));
}

/** A grey PNG that cannot be packed, with this many bytes packed behind its last pixel. */
QByteArray noisyPng(int side, qsizetype surplus)
{
    QRandomGenerator random(1);
    QByteArray rows;
    for (int y = 0; y < side; ++y) {
        rows += '\0';
        for (int x = 0; x < side; ++x)
            rows += static_cast<char>(random.bounded(256));
    }
    const auto length = bigEndian(static_cast<quint32>(side));
    constexpr qsizetype lengthInFront = 4;
    return QByteArray("\x89PNG\r\n\x1A\n")
        + pngChunk("IHDR", length + length + QByteArray("\x08\0\0\0\0", 5))
        + pngChunk("IDAT", qCompress(rows + QByteArray(surplus, '\0')).sliced(lengthInFront))
        + pngChunk("IEND", {});
}

} // namespace

class TestIconFamily : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRepresentationThatSuitsBestIsChosen_data()
    {
        QTest::addColumn<QByteArrayList>("types");
        QTest::addColumn<int>("chosen");
        QTest::newRow("the very size") << QByteArrayList{"ic10", "ic08", "ic07", "ic12"} << 128;
        QTest::newRow("next larger") << QByteArrayList{"ic10", "ic09", "ic08", "ic12"} << 256;
        QTest::newRow("only larger") << QByteArrayList{"ic10"} << 1024;
        QTest::newRow("largest of the smaller") << QByteArrayList{"icp4", "ic12", "icp5"} << 64;
        QTest::newRow("doubled sizes") << QByteArrayList{"ic11", "ic14", "ic13"} << 256;
    }

    void theRepresentationThatSuitsBestIsChosen()
    {
        QFETCH(QByteArrayList, types);
        QFETCH(int, chosen);
        const QHash<QByteArray, int> sides{{"icp4", 16}, {"icp5", 32}, {"ic11", 32}, {"ic12", 64},
            {"ic07", 128}, {"ic08", 256}, {"ic13", 256}, {"ic09", 512}, {"ic14", 512},
            {"ic10", 1024}};
        Entries entries;
        for (const QByteArray &type : types)
            entries.append({type, squarePng(sides.value(type), Qt::green)});
        QCOMPARE(iconOf(entries).width(), chosen);
    }

    void theOlderTypesAreRead_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QByteArray>("maskType");
        QTest::addColumn<int>("side");
        QTest::addColumn<int>("padding");
        QTest::newRow("16") << QByteArray("is32") << QByteArray("s8mk") << 16 << 0;
        QTest::newRow("32") << QByteArray("il32") << QByteArray("l8mk") << 32 << 0;
        QTest::newRow("48") << QByteArray("ih32") << QByteArray("h8mk") << 48 << 0;
        QTest::newRow("128") << QByteArray("it32") << QByteArray("t8mk") << 128 << 4;
    }

    void theOlderTypesAreRead()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, maskType);
        QFETCH(int, side);
        QFETCH(int, padding);
        QByteArray mask(qsizetype{side} * side, '\x80');
        mask.back() = '\xFF';
        const QImage read
            = iconOf({{type, QByteArray(padding, 0) + redRuns(side)}, {maskType, mask}});
        QCOMPARE(read.size(), QSize(side, side));
        QCOMPARE(read.pixelColor(0, 0), QColor(255, 0, 0, 128));
        QCOMPARE(read.pixelColor(side - 1, side - 1), QColor(Qt::red));
    }

    void differingBytesAreReadAsTheyStand()
    {
        QByteArray planes;
        for (int i = 0; i < 3 * pixels16; i += 128)
            planes += '\x7F' + QByteArray(127, char(i / 3)) + char(i / 3 + 1);
        const QImage read = iconOf({{"is32", planes}});
        QCOMPARE(read.pixel(0, 0), qRgb(0, 85, 170));
        QCOMPARE(read.pixel(15, 7), qRgb(1, 86, 171));
        QCOMPARE(read.pixel(0, 8), qRgb(42, 128, 213));
    }

    void withoutOpacityAnOlderTypeIsOpaque()
    {
        const QImage read = iconOf({{"it32", QByteArray(4, 0) + redRuns(128)}});
        QCOMPARE(read.pixelColor(64, 64), QColor(Qt::red));
        QCOMPARE(read.pixelColor(127, 127), QColor(Qt::red));
    }

    void coloursOrOpacityOfAnotherLengthAreNoIcon_data()
    {
        QTest::addColumn<QByteArray>("colours");
        QTest::addColumn<QByteArray>("mask");
        const QByteArray mask(pixels16, '\xFF');
        const QByteArray colours = redRuns(16);
        const QByteArray half = run(pixels16, '\xFF');
        QTest::newRow("no colours") << QByteArray() << mask;
        QTest::newRow("one plane") << half << mask;
        QTest::newRow("one pixel too few") << half + half + run(pixels16 - 3, 0) + "\1xy" << mask;
        QTest::newRow("one pixel too many") << colours + QByteArray("\0x", 2) << mask;
        QTest::newRow("run too long") << half + half + run(130, 0) + run(130, 0) << mask;
        QTest::newRow("end within a run") << colours.chopped(1) << mask;
        QTest::newRow("end within differing bytes") << half + half + run(130, 0) + "\x7Exx" << mask;
        QTest::newRow("a byte behind") << colours + '\0' << mask;
        QTest::newRow("short opacity") << colours << mask.chopped(1);
        QTest::newRow("long opacity") << colours << mask + '\xFF';
        QTest::newRow("empty opacity") << colours << QByteArray();
    }

    void coloursOrOpacityOfAnotherLengthAreNoIcon()
    {
        QFETCH(QByteArray, colours);
        QFETCH(QByteArray, mask);
        QVERIFY(iconOf({{"is32", colours}, {"s8mk", mask}}).isNull());
        // Another representation stands in.
        QCOMPARE(iconOf({{"is32", colours}, {"s8mk", mask}, {"icp4", squarePng(16, Qt::green)}})
                     .pixelColor(8, 8),
            QColor(0, 255, 0));
    }

    void theFirstEntryOfATypeCounts()
    {
        QCOMPARE(iconOf({{"ic07", squarePng(128, Qt::red)}, {"ic07", squarePng(128, Qt::blue)}})
                     .pixelColor(1, 1),
            QColor(Qt::red));
        QVERIFY(iconOf({{"ic07", "damaged"}, {"ic07", squarePng(128, Qt::blue)}}).isNull());
    }

    void entriesBehindTheLimitAreNotLookedAt()
    {
        Entries entries(255, {"none", ""});
        entries.append({"ic07", squarePng(128, Qt::red)});
        QCOMPARE(iconOf(entries).width(), 128);
        entries.prepend({"none", ""});
        QVERIFY(iconOf(entries).isNull());
    }

    void aPngLargerThanItsTypeIsNotDrawn()
    {
        QVERIFY(iconOf({{"ic07", squarePng(129, Qt::red)}}).isNull());
        QCOMPARE(
            iconOf({{"ic07", squarePng(129, Qt::red)}, {"ic12", squarePng(64, Qt::green)}}).width(),
            64);
    }

    void aPngThatHoldsMuchMoreThanItsPixelsIsNotDrawn()
    {
        QCOMPARE(iconOf({{"ic09", noisyPng(512, 0)}}).width(), 512);
        QCOMPARE(iconOf({{"ic09", noisyPng(512, 1000)}}).width(), 512);
        QVERIFY(iconOf({{"ic09", noisyPng(512, 10'000'000)}}).isNull());
    }

    void theColourProfileIsKept()
    {
        QImage image(128, 128, QImage::Format_ARGB32);
        image.fill(Qt::red);
        image.setColorSpace(QColorSpace::DisplayP3);
        const QImage read = iconOf({{"ic07", pngOf(image)}});
        QCOMPARE(read.pixelColor(1, 1), QColor(Qt::red));
        QCOMPARE(read.colorSpace().primaries(), QColorSpace::Primaries::DciP3D65);
    }

    void aDamagedColourProfileIsLeftOut()
    {
        QImage image(128, 128, QImage::Format_ARGB32);
        image.fill(Qt::red);
        image.setColorSpace(QColorSpace::DisplayP3);
        QByteArray bytes = pngOf(image);
        const qsizetype profile = bytes.indexOf("iCCP");
        QVERIFY(profile > 0);
        for (qsizetype i = profile + 30; i < profile + 60; ++i)
            bytes[i] = '\xAA';
        const QImage read = iconOf({{"ic07", bytes}});
        QCOMPARE(read.pixelColor(1, 1), QColor(Qt::red));
        QVERIFY(!read.colorSpace().isValid());
    }

    void colours16BitsDeepAreNoBrighter()
    {
        QImage image(16, 16, QImage::Format_RGBX64);
        image.fill(QColor(100, 150, 200));
        const QByteArray bytes = pngOf(image);
        QCOMPARE(int(bytes[24]), 16);
        QCOMPARE(iconOf({{"icp4", bytes}}).pixelColor(8, 8), QColor(100, 150, 200));
    }

    void anotherRepresentationStandsInForADamagedOne()
    {
        const QByteArray damaged = squarePng(128, Qt::red).first(40);
        QCOMPARE(iconOf({{"ic07", damaged}, {"ic08", "\0\0\0\x0CjP  "},
                            {"ic12", squarePng(64, Qt::green)}})
                     .width(),
            64);
    }

    void unknownEntriesAreSkipped()
    {
        QCOMPARE(iconOf({{"TOC ", "ic07\0\0\0\1"}, {"info", "bplist00"}, {"ic04", "ARGBxxxx"},
                            {"ic07", squarePng(128, Qt::red)}})
                     .width(),
            128);
    }
};

QTEST_APPLESS_MAIN(TestIconFamily)
#include "tst_icon_family.moc"
