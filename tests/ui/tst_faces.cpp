#include "ui/face_images.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::ui;

namespace
{

/** Pixels to a point, so that half a point can be read. */
constexpr int scale = 4;

/** A button of 100 x 28 points, with the line of shade below it. */
QImage face(const QString &kind, bool dark, const QString &state)
{
    return FaceImages().requestImage(
        u"%1?dark=%2&height=28&radius=7&state=%3"_s.arg(kind).arg(dark ? 1 : 0).arg(state), nullptr,
        QSize(100, 29) * scale);
}

/** In the middle, so many points from the top. */
QColor at(const QImage &image, double y)
{
    return image.pixelColor(image.width() / 2, int(y * scale));
}

QColor veiled(const QColor &base, double white, double opacity)
{
    const auto mixed = [&](double part) { return float(part + (white - part) * opacity); };
    return QColor::fromRgbF(mixed(base.redF()), mixed(base.greenF()), mixed(base.blueF()));
}

/** The first and the last row of the fill are a little way into its gradient. */
bool isClose(const QColor &one, const QColor &other)
{
    return qAbs(one.red() - other.red()) <= 2 && qAbs(one.green() - other.green()) <= 2
        && qAbs(one.blue() - other.blue()) <= 2 && one.alpha() == 255;
}

/** One kind in one appearance: its fill, and how much white or black lies over it. */
struct Kind {
    QString name;
    bool dark;
    QColor top;
    QColor bottom;
    double white;
    double hovered;
    double pressed;
};

const QList<Kind> kinds{
    {u"prominent"_s, false, QColor(0x1873e8), QColor(0x0068e1), 0, 0.07, 0.16},
    {u"prominent"_s, true, QColor(0x126fe2), QColor(0x0a6be0), 0, 0.07, 0.15},
    {u"bordered"_s, false, QColor(0xffffff), QColor(0xfcfcfc), 0, 0.03, 0.09},
    {u"bordered"_s, true, QColor(0x626266), QColor(0x58585c), 1, 0.06, 0.08},
};

} // namespace

/** What the push buttons are painted with, pixel by pixel. */
class TestFaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFillIsKept_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<QColor>("top");
        QTest::addColumn<QColor>("bottom");
        for (const auto &[name, dark, top, bottom, white, hovered, pressed] : kinds) {
            const std::pair<const char *, double> states[]{
                {"normal", 0}, {"hovered", hovered}, {"pressed", pressed}};
            for (const auto &[state, opacity] : states)
                QTest::addRow("%s, %s, %s", qPrintable(name), dark ? "dark" : "light", state)
                    << face(name, dark, QLatin1StringView(state)) << veiled(top, white, opacity)
                    << veiled(bottom, white, opacity);
        }
    }

    void theFillIsKept()
    {
        QFETCH(QImage, image);
        QFETCH(QColor, top);
        QFETCH(QColor, bottom);
        // Next to the edge, which is half a point wide.
        const auto first = at(image, 0.5);
        const auto last = at(image, 27.25);
        QVERIFY2(isClose(first, top), qPrintable(first.name() + u" is not "_s + top.name()));
        QVERIFY2(isClose(last, bottom), qPrintable(last.name() + u" is not "_s + bottom.name()));
    }

    void theEdgeOfABorderedOneIsHalfAPoint()
    {
        const auto light = face(u"bordered"_s, false, u"normal"_s);
        QCOMPARE(at(light, 0).alpha(), qRound(0.14 * 255));
        QCOMPARE(at(light, 0.25).alpha(), qRound(0.14 * 255));
        const auto dark = face(u"bordered"_s, true, u"normal"_s);
        QVERIFY(isClose(at(dark, 0), veiled(QColor(0x626266), 1, 0.12)));
        QVERIFY(isClose(at(dark, 0.25), veiled(QColor(0x626266), 1, 0.12)));
    }

    void theShadeIsALineBelow()
    {
        for (const auto &[name, dark, top, bottom, white, hovered, pressed] : kinds) {
            const auto image = face(name, dark, u"normal"_s);
            QVERIFY(at(image, 28).alpha() > 0);
            QCOMPARE(at(image, 28.75).alpha(), at(image, 28).alpha());
        }
        const auto light = face(u"bordered"_s, false, u"normal"_s);
        QCOMPARE(at(light, 28.5).alpha(), qRound(0.12 * 255));
    }
};

QTEST_MAIN(TestFaces)
#include "tst_faces.moc"
