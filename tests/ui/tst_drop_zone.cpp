#include "ui/colours.h"
#include "ui/window_drag.h"

#include <algorithm>
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
    void aDragOverItHighlightsIt()
    {
        WindowFixture fixture;
        WindowDrag drag(fixture, {firstPath});
        QVERIFY(drag.enter());
        QVERIFY(fixture.store->isDropTargeted());
        auto *const zone = fixture.item(u"dropZone"_s);
        QTRY_COMPARE(zone->scale(), 1.01);
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
        QList<QColor> seen;
        const auto note = [&] { seen.append(colour()); };
        connect(fixture.window(), &QQuickWindow::afterAnimating, this, note, Qt::DirectConnection);
        fixture.store->setDropTargeted(true);
        QTRY_COMPARE(colour(), colours::blueSolid);
        const auto between = [&](const QColor &shade) {
            return shade.alphaF() > resting.alphaF() && shade.alphaF() < colours::blueSolid.alphaF()
                && shade.green() <= resting.green() && shade.green() >= colours::blueSolid.green()
                && shade.blue() <= resting.blue() && shade.blue() >= colours::blueSolid.blue()
                && shade.red() == 0;
        };
        QVERIFY(std::any_of(seen.cbegin(), seen.cend(), between));
        for (const auto &shade : seen)
            QVERIFY(between(shade) || shade == resting || shade == colours::blueSolid);
    }

    void betweenItsStatesOneSymbolFadesIntoTheOther()
    {
        WindowFixture fixture;
        const auto *const resting = fixture.window()->findChild<QQuickItem *>(u"dropZoneSymbol"_s);
        const auto *const highlighted
            = fixture.window()->findChild<QQuickItem *>(u"dropZoneHighlightedSymbol"_s);
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

    void whileAddingASpinnerStandsInThePlaceOfTheSymbol()
    {
        WindowFixture fixture;
        QCOMPARE(fixture.item(u"spinner"_s), nullptr);
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        auto *const spinner = fixture.item(u"spinner"_s);
        QCOMPARE(accessibleName(spinner), u"Adding application"_s);
        QCOMPARE(accessibleRole(spinner), QAccessible::ProgressBar);
        QTRY_VERIFY(spinner->property("step").toInt() > 0);
        QCOMPARE(fixture.item(u"dropZoneSymbol"_s), nullptr);
        fixture.settle();
        QCOMPARE(fixture.item(u"spinner"_s), nullptr);
        QVERIFY(fixture.item(u"dropZoneSymbol"_s) != nullptr);
    }

    void aDragOverItWhileAddingChangesNothing()
    {
        WindowFixture fixture;
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        WindowDrag drag(fixture, {firstPath});
        QVERIFY(!drag.enter());
        const auto *const zone = fixture.item(u"dropZone"_s);
        QTest::qWait(50);
        QCOMPARE(zone->scale(), 1.0);
        QCOMPARE(zone->property("highlight").toReal(), 0.0);
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
