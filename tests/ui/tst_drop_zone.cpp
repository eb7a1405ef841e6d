#include "ui/window_drag.h"

#include <algorithm>
#include <QColor>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const auto firstPath = u"/Users/someone/First App.app"_s;

} // namespace

class TestDropZone : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void waitingItInvites()
    {
        const WindowFixture fixture;
        const auto *const zone = fixture.item(u"dropZone"_s);
        QVERIFY(zone->height() >= 165);
        QCOMPARE(zone->scale(), 1.0);
        const auto *const fill = fixture.item(u"dropZoneFill"_s);
        QCOMPARE(fill->property("radius").toReal(), 20.0);
        QCOMPARE(
            fill->property("color").value<QColor>(), QColor::fromRgbF(0, 0x7a / 255.F, 1, 0.06F));
        const auto *const line = fixture.item(u"dropZoneDashes"_s);
        QCOMPARE(line->property("lineWidth").toReal(), 1.5);
        QCOMPARE(
            line->property("color").value<QColor>(), QColor::fromRgbF(0, 0x7a / 255.F, 1, 0.45F));
        QVERIFY(fixture.text(u"Drop an app here"_s) != nullptr);
        const auto *const invitation
            = fixture.text(u"Choose an app in Finder to block its new network connections."_s);
        QVERIFY(invitation != nullptr);
        QCOMPARE(invitation->property("color").value<QColor>(), QColor::fromRgbF(0, 0, 0, 0.60F));
    }

    void aDragOverItHighlightsIt()
    {
        WindowFixture fixture;
        WindowDrag drag(fixture, {firstPath});
        QVERIFY(drag.enter());
        QVERIFY(fixture.store->isDropTargeted());
        auto *const zone = fixture.item(u"dropZone"_s);
        QTRY_COMPARE(zone->scale(), 1.01);
        QTRY_COMPARE(
            fixture.item(u"dropZoneFill"_s)->property("color").value<QColor>(), QColor(0x0068e1));
        const auto *const outline = fixture.item(u"dropZoneOutline"_s);
        auto *const border = qvariant_cast<QObject *>(outline->property("border"));
        QCOMPARE(border->property("width").toReal(), 1.5);
        QVERIFY2(!border->property("pixelAligned").toBool(), "it would be drawn 2 wide");
        QCOMPARE(border->property("color").value<QColor>(), QColor::fromRgbF(1, 1, 1, 0.65F));
        QTRY_COMPARE(
            fixture.item(u"dropZoneLine"_s)->property("color").value<QColor>(), QColor(Qt::white));
        drag.leave();
        QVERIFY(!fixture.store->isDropTargeted());
        QTRY_COMPARE(zone->scale(), 1.0);
    }

    void betweenItsStatesItsColoursLieBetween()
    {
        WindowFixture fixture;
        const auto *const fill = fixture.item(u"dropZoneFill"_s);
        const auto colour = [&] { return fill->property("color").value<QColor>(); };
        const auto resting = colour();
        const QColor highlighted(0x0068e1);
        QList<QColor> seen;
        const auto note = [&] { seen.append(colour()); };
        connect(fixture.window(), &QQuickWindow::afterAnimating, this, note, Qt::DirectConnection);
        fixture.store->setDropTargeted(true);
        QTRY_COMPARE(colour(), highlighted);
        const auto between = [&](const QColor &shade) {
            return shade.alphaF() > resting.alphaF() && shade.alphaF() < highlighted.alphaF()
                && shade.green() <= resting.green() && shade.green() >= highlighted.green()
                && shade.blue() <= resting.blue() && shade.blue() >= highlighted.blue()
                && shade.red() == 0;
        };
        QVERIFY(std::any_of(seen.cbegin(), seen.cend(), between));
        for (const auto &shade : seen)
            QVERIFY(between(shade) || shade == resting || shade == highlighted);
    }

    void betweenItsStatesOneSymbolFadesIntoTheOther()
    {
        WindowFixture fixture;
        const auto *const resting = fixture.window()->findChild<QQuickItem *>(u"dropZoneSymbol"_s);
        const auto *const highlighted
            = fixture.window()->findChild<QQuickItem *>(u"dropZoneHighlightedSymbol"_s);
        QCOMPARE(resting->property("color").value<QColor>(), QColor(0x007aff));
        QCOMPARE(highlighted->property("color").value<QColor>(), QColor(Qt::white));
        QCOMPARE(highlighted->opacity(), 0.0);
        const QSignalSpy restingPictures(resting, SIGNAL(sourceChanged(QUrl)));
        const QSignalSpy highlightedPictures(highlighted, SIGNAL(sourceChanged(QUrl)));
        QList<qreal> seen;
        const auto note = [&] {
            seen.append(highlighted->opacity());
            QCOMPARE(resting->opacity(), 1.0);
            QCOMPARE(resting->isVisible(), highlighted->opacity() < 1);
        };
        connect(fixture.window(), &QQuickWindow::afterAnimating, this, note, Qt::DirectConnection);
        fixture.store->setDropTargeted(true);
        QTRY_COMPARE(highlighted->opacity(), 1.0);
        QVERIFY(std::any_of(
            seen.cbegin(), seen.cend(), [](qreal opacity) { return opacity > 0 && opacity < 1; }));
        QCOMPARE(restingPictures.size() + highlightedPictures.size(), 0);
    }

    void whileAddingItSaysSo()
    {
        WindowFixture fixture;
        QCOMPARE(fixture.item(u"spinner"_s), nullptr);
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        QVERIFY(fixture.text(u"Adding application"_s) != nullptr);
        QVERIFY(
            fixture.text(
                u"Discovering helpers and background processes without blocking the interface."_s)
            != nullptr);
        QCOMPARE(fixture.item(u"spinner"_s)->property("color").value<QColor>(), QColor(0x007aff));
        QCOMPARE(accessibleName(fixture.item(u"spinner"_s)), u"Adding application"_s);
        QCOMPARE(fixture.text(u"Drop an app here"_s), nullptr);
    }

    void aDragOverItWhileAddingChangesNothing()
    {
        WindowFixture fixture;
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        WindowDrag drag(fixture, {firstPath});
        QVERIFY(!drag.enter());
        const auto *const fill = fixture.item(u"dropZoneFill"_s);
        QCOMPARE(fixture.item(u"dropZone"_s)->scale(), 1.0);
        QTest::qWait(50);
        QCOMPARE(fixture.item(u"dropZone"_s)->scale(), 1.0);
        QCOMPARE(
            fill->property("color").value<QColor>(), QColor::fromRgbF(0, 0x7a / 255.F, 1, 0.06F));
        QVERIFY(fixture.item(u"spinner"_s) != nullptr);
    }

    void itsNameForAssistiveTechnologyFollowsItsState()
    {
        WindowFixture fixture;
        const auto *const zone = fixture.item(u"dropZone"_s);
        QCOMPARE(accessibleName(zone), u"Drop zone for an application"_s);
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        QCOMPARE(accessibleName(zone), u"Adding application"_s);
    }
};

QTEST_MAIN(TestDropZone)
#include "tst_drop_zone.moc"
