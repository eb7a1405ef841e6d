#include "ui/application_images.h"
#include "ui/shadow_images.h"
#include "ui/symbol_images.h"
#include "ui/window_fixture.h"

#include <QBuffer>
#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using namespace zorvane::ui;

namespace
{

QByteArray png(QColor colour, QSize size = {128, 128})
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "png");
    return bytes;
}

QImage symbol(const QString &query, QSize size = {48, 48})
{
    return SymbolImages().requestImage(query, nullptr, size);
}

/** How much of a picture is covered, in whole pixels. */
double ink(const QImage &image)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += image.pixelColor(x, y).alphaF();
    }
    return sum;
}

/** The product's own, in so many pixels at each side. */
QImage ownIcon(const QString &query, int pixels)
{
    FakePlatform platform;
    const zorvane::app::AppBlockStore store(platform.ports);
    return ApplicationImages(store).requestImage(query, nullptr, QSize(pixels, pixels));
}

/** The icon that a list with one application shows for it. */
QImage iconFor(const std::optional<QByteArray> &bytes)
{
    const WindowFixture fixture({{u"App"_s, u"org.example.app"_s, std::nullopt, bytes}});
    const auto address = ApplicationImages::address(fixture.store->applications().first());
    return ApplicationImages(*fixture.store)
        .requestImage(address.path().mid(1), nullptr, QSize(38, 38));
}

} // namespace

class TestImages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSymbolHasTheColourAskedFor()
    {
        const auto image
            = symbol(u"arrow.down.circle.fill?color=%23ff9500&stroke=1.60"_s, QSize(24, 24));
        QCOMPARE(image.size(), QSize(24, 24));
        QCOMPARE(image.pixelColor(4, 12), QColor(0xff9500));
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    }

    void aFaintSymbolIsFaintAlikeWhereItsPartsOverlap()
    {
        const auto image = symbol(u"lock.fill?color=%2399000000&stroke=1.60"_s, QSize(96, 96));
        int darkest = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                darkest = std::max(darkest, image.pixelColor(x, y).alpha());
        }
        QCOMPARE(darkest, 0x99);
    }

    void aHeavierSymbolHasMoreInk()
    {
        const auto light = ink(symbol(u"xmark?color=%23000000&stroke=1.25"_s));
        const auto bold = ink(symbol(u"xmark?color=%23000000&stroke=2.6"_s));
        QVERIFY(bold > light * 1.7);
    }

    void everySymbolCanBeDrawn()
    {
        const QDir symbols(u":/qt/qml/Zorvane/Ui/symbols"_s);
        const auto names = symbols.entryList({u"*.svg"_s});
        QCOMPARE(names.size(), 16);
        for (const auto &name : names) {
            const auto image = symbol(name.chopped(4) + u"?color=%23000000&stroke=1.6"_s);
            QVERIFY2(ink(image) > 50, qPrintable(name));
        }
    }

    void aSymbolThatDoesNotExistIsNoImage()
    {
        QTest::ignoreMessage(QtWarningMsg, "No symbol is named no.such");
        QVERIFY(symbol(u"no.such?color=%23000000&stroke=1.6"_s).isNull());
    }

    void theProductsIconHasRoundCorners_data()
    {
        QTest::addColumn<int>("scale");
        QTest::newRow("at 1x") << 1;
        QTest::newRow("at 2x") << 2;
    }

    void theProductsIconHasRoundCorners()
    {
        QFETCH(int, scale);
        const auto pixels = 46 * scale;
        const auto icon = ownIcon(u"own?side=46&radius=11"_s, pixels);
        QCOMPARE(icon.size(), QSize(pixels, pixels));
        const auto last = pixels - 1;
        for (const auto corner :
            {QPoint(0, 0), QPoint(last, 0), QPoint(0, last), QPoint(last, last)})
            QCOMPARE(icon.pixelColor(corner).alpha(), 0);
        // Between them it is as it is drawn.
        const auto drawn = ownIcon(u"own?side=46&radius=0"_s, pixels);
        const auto radius = 11 * scale;
        const QRect middle(radius, radius, pixels - 2 * radius, pixels - 2 * radius);
        QCOMPARE(icon.copy(middle), drawn.copy(middle));
        QCOMPARE(icon.pixelColor(middle.center()).alpha(), 255);
        // The drawing has round corners of its own; with others it is cut.
        const auto inside = QPoint(5, 5) * scale;
        QCOMPARE(icon.pixelColor(inside), drawn.pixelColor(inside));
        QCOMPARE(ownIcon(u"own?side=46&radius=23"_s, pixels).pixelColor(inside).alpha(), 0);
    }

    void anApplicationShowsItsIcon()
    {
        const auto image = iconFor(png(Qt::red));
        QCOMPARE(image.size(), QSize(38, 38));
        QCOMPARE(image.pixelColor(19, 19), QColor(Qt::red));
    }

    void anIconThatCannotBeReadIsStoodInFor_data()
    {
        QTest::addColumn<std::optional<QByteArray>>("bytes");
        QTest::newRow("absent") << std::optional<QByteArray>();
        QTest::newRow("empty") << std::optional<QByteArray>(QByteArray());
        QTest::newRow("no picture") << std::optional<QByteArray>("not a picture");
        QTest::newRow("cut off") << std::optional(png(Qt::red).left(60));
        QTest::newRow("enormous") << std::optional(png(Qt::red, {1025, 1}));
    }

    void anIconThatCannotBeReadIsStoodInFor()
    {
        QFETCH(std::optional<QByteArray>, bytes);
        const auto image = iconFor(bytes);
        QCOMPARE(image.size(), QSize(38, 38));
        QVERIFY(ink(image) > 38 * 38 / 2.0);
        QVERIFY(image.pixelColor(19, 19) != QColor(Qt::red));
    }

    void anotherIconHasAnotherAddress()
    {
        zorvane::records::BlockedApplication application;
        application.id = QUuid::createUuid();
        const auto without = ApplicationImages::address(application);
        application.iconData = png(Qt::red);
        const auto red = ApplicationImages::address(application);
        application.iconData = png(Qt::blue);
        const auto blue = ApplicationImages::address(application);
        QVERIFY(without != red);
        QVERIFY(red != blue);
        QCOMPARE(without.path(), blue.path());
    }

    void aShadowFadesOutwards()
    {
        ShadowImages shadows;
        const auto image = shadows.requestImage(
            u"box?blur=20&radius=12&margin=30&corner=60"_s, nullptr, QSize());
        QCOMPARE(image.size(), QSize(121, 121));
        const auto alpha = [&](int x) { return image.pixelColor(x, 60).alpha(); };
        QVERIFY(alpha(60) > 250);
        QVERIFY(alpha(30) > 110 && alpha(30) < 145);
        QVERIFY(alpha(2) < 8);
        for (int x = 1; x <= 60; ++x)
            QVERIFY(alpha(x) >= alpha(x - 1));
    }
};

QTEST_MAIN(TestImages)
#include "tst_images.moc"
