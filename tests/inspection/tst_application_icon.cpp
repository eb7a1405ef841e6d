#include "inspection/application_icon.h"
#include "tests/inspection/made_up_system.h"

#include <cstdlib>
#include <QColorSpace>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::inspection;
using namespace zorvane::tests;

class TestApplicationIcon : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MadeUpSystem> m_system;

private Q_SLOTS:
    void init() { m_system = std::make_unique<MadeUpSystem>(); }

    void theIconIsAPngOf128By128_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("the very size") << QSize(128, 128);
        QTest::newRow("larger") << QSize(1024, 1024);
        QTest::newRow("smaller") << QSize(16, 16);
        QTest::newRow("not square") << QSize(300, 20);
    }

    void theIconIsAPngOf128By128()
    {
        QFETCH(QSize, size);
        m_system->addApplication(u"/x/Tool.app"_s);
        m_system->icons.image = QImage(size, QImage::Format_RGB32);
        m_system->icons.image.fill(Qt::red);
        m_system->icons.image.setText(u"Author"_s, u"someone"_s);
        const auto data = recordOf(m_system->inspect(u"/x/Tool.app"_s))->iconData;
        QVERIFY(data);
        QVERIFY(data->startsWith("\x89PNG"));
        const QImage image = QImage::fromData(*data);
        QCOMPARE(image.size(), QSize(128, 128));
        QVERIFY(image.hasAlphaChannel());
        QVERIFY(image.textKeys().isEmpty());
        for (const QPoint corner : {QPoint(0, 0), QPoint(127, 127), QPoint(64, 64)})
            QCOMPARE(image.pixelColor(corner), QColor(Qt::red));
    }

    void clearPixelsDoNotColourTheEdges()
    {
        QImage image(256, 256, QImage::Format_ARGB32);
        image.fill(qRgba(0, 255, 0, 0));
        for (int y = 0; y < 256; ++y) {
            for (int x = 0; x < 127; ++x)
                image.setPixel(x, y, qRgba(255, 0, 0, 255));
        }
        const QImage icon = QImage::fromData(*encodedIcon(image));
        const QColor edge = icon.pixelColor(63, 64);
        QVERIFY(edge.alpha() > 100 && edge.alpha() < 155);
        QCOMPARE(edge.green(), 0);
        QVERIFY(edge.red() > 250);
    }

    void theIconIsDrawnInTheStandardColours()
    {
        const QColor colour(200, 60, 50);
        QImage image(128, 128, QImage::Format_ARGB32_Premultiplied);
        image.fill(colour);
        image.setColorSpace(QColorSpace::SRgb);
        image.convertToColorSpace(QColorSpace::DisplayP3);
        QVERIFY(image.pixelColor(64, 64).red() < colour.red() - 5);
        const QColor drawn = QImage::fromData(*encodedIcon(image)).pixelColor(64, 64);
        QVERIFY(std::abs(drawn.red() - colour.red()) <= 2);
        QVERIFY(std::abs(drawn.green() - colour.green()) <= 2);
        QVERIFY(std::abs(drawn.blue() - colour.blue()) <= 2);
    }
};

QTEST_GUILESS_MAIN(TestApplicationIcon)
#include "tst_application_icon.moc"
