#include "ui/slot_column.h"

#include <array>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

using zorvane::ui::ColumnSlot;
using zorvane::ui::SlotColumn;

namespace
{

constexpr qreal slotHeight = 50;

/** Forty slots in a column, of which the upper hundred points are in view. */
struct Fixture {
    Fixture()
    {
        column.setParentItem(window.contentItem());
        column.setViewBottom(100);
        for (auto &slot : slotsOfColumn) {
            slot.setHeight(slotHeight);
            slot.setParentItem(&column);
        }
    }

    /** The slots are placed before a frame. */
    void frame() { window.grabWindow(); }

    QQuickWindow window;
    SlotColumn column;
    std::array<ColumnSlot, 40> slotsOfColumn;
};

} // namespace

class TestSlotColumn : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void slotsAreStackedWithoutGaps()
    {
        Fixture fixture;
        fixture.frame();
        QCOMPARE(fixture.slotsOfColumn[7].y(), 7 * slotHeight);
        QCOMPARE(fixture.column.implicitHeight(), 40 * slotHeight);
        fixture.slotsOfColumn[2].setHeight(90);
        fixture.frame();
        QCOMPARE(fixture.slotsOfColumn[7].y(), 7 * slotHeight + 40);
    }

    void aSlotOutOfSightIsNotNearEvenBeforeAllArePlaced()
    {
        Fixture fixture;
        const QSignalSpy changes(&fixture.slotsOfColumn[10], &ColumnSlot::nearChanged);
        fixture.frame();
        QVERIFY(fixture.slotsOfColumn[0].isNear());
        QVERIFY(fixture.slotsOfColumn[3].isNear());
        QVERIFY(!fixture.slotsOfColumn[10].isNear());
        QCOMPARE(changes.size(), 0);
    }

    void nearnessFollowsTheView()
    {
        Fixture fixture;
        fixture.frame();
        fixture.column.setViewTop(500);
        fixture.column.setViewBottom(600);
        fixture.frame();
        QVERIFY(!fixture.slotsOfColumn[0].isNear());
        QVERIFY(fixture.slotsOfColumn[10].isNear());
    }

    void scrollingIsFollowedBeforeTheNextFrame()
    {
        Fixture fixture;
        fixture.frame();
        fixture.column.setViewTop(500);
        QVERIFY(!fixture.slotsOfColumn[5].isNear());
        fixture.column.setViewBottom(600);
        QVERIFY(fixture.slotsOfColumn[10].isNear());
        QVERIFY(!fixture.slotsOfColumn[5].isNear());
    }

    void aMovedSlotIsPlacedAnew()
    {
        Fixture fixture;
        fixture.frame();
        fixture.slotsOfColumn[9].stackBefore(&fixture.slotsOfColumn[0]);
        fixture.slotsOfColumn[9].setIndex(0);
        fixture.frame();
        QCOMPARE(fixture.slotsOfColumn[9].y(), 0.0);
        QCOMPARE(fixture.slotsOfColumn[0].y(), slotHeight);
    }
};

QTEST_MAIN(TestSlotColumn)
#include "tst_slot_column.moc"
