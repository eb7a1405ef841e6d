#include "ui/appearance.h"
#include "ui/measures.h"
#include "ui/press_area.h"

#include <algorithm>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using namespace zorvane::tests::colours;
using zorvane::ui::PressArea;

namespace
{

/** The button that removes the only row, in a window that draws. */
struct Fixture : WindowFixture {
    Fixture()
        : WindowFixture({{u"Atlas"_s, u"org.example.atlas"_s, std::nullopt, std::nullopt}})
        , area(qobject_cast<PressArea *>(button(u"Remove from list"_s)))
    {
    }

    [[nodiscard]] QPoint centre() const
    {
        return area->mapToScene(QPointF(area->width() / 2, area->height() / 2)).toPoint();
    }

    [[nodiscard]] QPoint elsewhere() const { return centre() - QPoint(200, 0); }

    /** Its part of this name; null if it has not been built. */
    [[nodiscard]] QQuickItem *part(const QString &name) const
    {
        const auto parts = area->childItems();
        const auto found = std::ranges::find(parts, name, &QObject::objectName);
        return found == parts.cend() ? nullptr : *found;
    }

    [[nodiscard]] QQuickItem *face() const { return part(u"plainFace"_s); }
    [[nodiscard]] QQuickItem *ring() const { return part(u"focusRing"_s); }

    PressArea *area;
};

} // namespace

class TestPressArea : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aClickIsAPressAndAReleaseInside()
    {
        const Fixture fixture;
        const QSignalSpy clicks(fixture.area, &PressArea::clicked);
        QTest::mousePress(fixture.window(), Qt::LeftButton, {}, fixture.centre());
        QVERIFY(fixture.area->isPressed());
        QCOMPARE(clicks.size(), 0);
        // The row goes, and the area with it.
        QTest::mouseRelease(fixture.window(), Qt::LeftButton, {}, fixture.centre());
        QCOMPARE(clicks.size(), 1);
    }

    void aReleaseOutsideIsNoClick()
    {
        const Fixture fixture;
        const QSignalSpy clicks(fixture.area, &PressArea::clicked);
        QTest::mousePress(fixture.window(), Qt::LeftButton, {}, fixture.centre());
        QTest::mouseMove(fixture.window(), fixture.elsewhere());
        QVERIFY(!fixture.area->isPressed());
        QTest::mouseRelease(fixture.window(), Qt::LeftButton, {}, fixture.elsewhere());
        QCOMPARE(clicks.size(), 0);
    }

    void whoComesBackBeforeTheReleaseClicks()
    {
        const Fixture fixture;
        const QSignalSpy clicks(fixture.area, &PressArea::clicked);
        QTest::mousePress(fixture.window(), Qt::LeftButton, {}, fixture.centre());
        QTest::mouseMove(fixture.window(), fixture.elsewhere());
        QTest::mouseMove(fixture.window(), fixture.centre());
        QVERIFY(fixture.area->isPressed());
        QTest::mouseRelease(fixture.window(), Qt::LeftButton, {}, fixture.centre());
        QCOMPARE(clicks.size(), 1);
    }

    void anotherButtonOfTheMouseDoesNothing()
    {
        const Fixture fixture;
        const QSignalSpy clicks(fixture.area, &PressArea::clicked);
        QTest::mouseClick(fixture.window(), Qt::RightButton, {}, fixture.centre());
        QCOMPARE(clicks.size(), 0);
    }

    void theFaceIsBuiltUnderThePointer()
    {
        const Fixture fixture;
        QCOMPARE(fixture.face(), nullptr);
        QTest::mouseMove(fixture.window(), fixture.elsewhere());
        QTest::mouseMove(fixture.window(), fixture.centre());
        QTRY_VERIFY(fixture.area->isHovered());
        QTRY_COMPARE(fixture.face()->opacity(), 1.0);
        QCOMPARE(fixture.ring(), nullptr);
        QTest::mouseMove(fixture.window(), fixture.elsewhere());
        QTRY_VERIFY(!fixture.area->isHovered());
        QTRY_COMPARE(fixture.face()->opacity(), 0.0);
    }

    void pressedItsFaceIsDarkerAndItsSymbolComesForward_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void pressedItsFaceIsDarkerAndItsSymbolComesForward()
    {
        QFETCH(bool, dark);
        const Appearance appearance(dark);
        const Fixture fixture;
        auto *const help = qobject_cast<PressArea *>(fixture.button(u"Show getting started"_s));
        const auto face = partOf(button(u"Show getting started"_s), u"plainFace"_s);
        const auto mark = symbol(u"questionmark.circle"_s);
        const auto colour = [&](const Find &find) {
            return find(fixture)->property("color").value<QColor>().rgba();
        };
        const auto centre = inWindow(help).center().toPoint();
        QTest::mouseMove(fixture.window(), centre + QPoint(0, 60));
        QTest::mouseMove(fixture.window(), centre);
        QTRY_VERIFY(help->isHovered());
        QCOMPARE(colour(face), (dark ? white(0.12) : quaternary).rgba());
        QCOMPARE(colour(mark), (dark ? white(0.64) : secondary).rgba());
        QTest::mousePress(fixture.window(), Qt::LeftButton, {}, centre);
        QCOMPARE(colour(face), (dark ? white(0.20) : black(0.13)).rgba());
        QCOMPARE(colour(mark), (dark ? white(0.92) : primary).rgba());
        QTest::mouseMove(fixture.window(), centre + QPoint(0, 60));
        QTest::mouseRelease(fixture.window(), Qt::LeftButton, {}, centre + QPoint(0, 60));
    }

    void theRingIsBuiltWhenTheKeyboardComes()
    {
        const Fixture fixture;
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        QCOMPARE(fixture.ring(), nullptr);
        fixture.area->forceActiveFocus(Qt::TabFocusReason);
        QCOMPARE(fixture.face(), nullptr);
        const auto *const ring = fixture.ring();
        QVERIFY(ring != nullptr);
        QCOMPARE(ring->mapRectToItem(fixture.area, QRectF(QPointF(), ring->size())),
            QRectF(-3, -3, 24 + 6, 24 + 6));
        fixture.button(u"Show getting started"_s)->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(!ring->isVisible());
    }

    void theToolTipGoesWhilePressed()
    {
        const Fixture fixture;
        QTest::mouseMove(fixture.window(), fixture.elsewhere());
        QTest::mouseMove(fixture.window(), fixture.centre());
        QTRY_VERIFY(fixture.item(u"toolTip"_s) != nullptr);
        QTest::mousePress(fixture.window(), Qt::LeftButton, {}, fixture.centre());
        QTRY_COMPARE(fixture.item(u"toolTip"_s), nullptr);
    }

    void whatIsNotAvailableIsNeitherHoveredNorPressed()
    {
        const Fixture fixture;
        fixture.area->setAvailable(false);
        const QSignalSpy clicks(fixture.area, &PressArea::clicked);
        QTest::mouseMove(fixture.window(), fixture.centre());
        QTest::mouseClick(fixture.window(), Qt::LeftButton, {}, fixture.centre());
        fixture.area->press();
        QVERIFY(!fixture.area->isHovered());
        QCOMPARE(clicks.size(), 0);
    }

    void aFingerThatIsLiftedLeavesNoPointerBehind()
    {
        const Fixture fixture;
        auto *const area = qobject_cast<PressArea *>(fixture.item(u"disclosure"_s));
        area->setToolTip(u"Unfold"_s);
        const auto centre
            = area->mapToScene(QPointF(area->width() / 2, area->height() / 2)).toPoint();
        const QSignalSpy clicks(area, &PressArea::clicked);
        auto *const screen = QTest::createTouchDevice();
        QTest::touchEvent(fixture.window(), screen).press(0, centre, fixture.window());
        QVERIFY(area->isPressed());
        QTest::touchEvent(fixture.window(), screen).release(0, centre, fixture.window());
        QCOMPARE(clicks.size(), 1);
        QVERIFY(!area->isPressed());
        QVERIFY(!area->isHovered());
        QCOMPARE(fixture.item(u"toolTip"_s), nullptr);
    }

    void theRingAndTheFaceFollowTheShape()
    {
        const Fixture fixture;
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        fixture.area->forceActiveFocus(Qt::TabFocusReason);
        fixture.area->setLit(true);
        fixture.area->setRadius(9);
        fixture.area->setFocusGap(2);
        fixture.area->setFocusInset(4);
        const auto *const ring = fixture.ring();
        QCOMPARE(ring->property("radius").toReal(), 9.0 + 2 + 3);
        QCOMPARE(ring->position(), QPointF(4 - 5, -5));
        const auto *const face = fixture.face();
        QCOMPARE(face->property("radius").toReal(), 9.0);
        QCOMPARE(face->position(), QPointF(4, 0));
    }

    void keysWithOtherModifiersDoNotPress_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifier>("modifier");
        QTest::addColumn<int>("presses");
        QTest::newRow("Control and Return") << Qt::Key_Return << Qt::ControlModifier << 0;
        QTest::newRow("Alt and Return") << Qt::Key_Return << Qt::AltModifier << 0;
        QTest::newRow("Meta and Space") << Qt::Key_Space << Qt::MetaModifier << 0;
        QTest::newRow("Shift and Space") << Qt::Key_Space << Qt::ShiftModifier << 1;
        QTest::newRow("Enter of the keypad") << Qt::Key_Enter << Qt::KeypadModifier << 1;
    }

    void keysWithOtherModifiersDoNotPress()
    {
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifier, modifier);
        const Fixture fixture;
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        auto *const area = qobject_cast<PressArea *>(fixture.item(u"disclosure"_s));
        area->forceActiveFocus(Qt::TabFocusReason);
        const QSignalSpy clicks(area, &PressArea::clicked);
        QTest::keyClick(fixture.window(), key, modifier);
        QTEST(int(clicks.size()), "presses");
    }

    void aToolTipWhoseTextGrowsStaysInTheWindow()
    {
        const Fixture fixture;
        QTest::mouseMove(fixture.window(), fixture.elsewhere());
        QTest::mouseMove(fixture.window(), fixture.centre());
        QTRY_VERIFY(fixture.item(u"toolTip"_s) != nullptr);
        fixture.area->setToolTip(u"Many words. "_s.repeated(20));
        const auto *const tip = fixture.item(u"toolTip"_s);
        QCOMPARE(tip->width(), 360.0 + 16);
        QCOMPARE(tip->x() + tip->width(), fixture.window()->width() - 8.0);
        // The button goes with the edge, and stays under the pointer.
        const int width = fixture.window()->width() - 4;
        fixture.window()->resize(width, fixture.window()->height());
        QTRY_COMPARE(fixture.window()->contentItem()->width(), qreal(width));
        QCOMPARE(fixture.item(u"toolTip"_s), tip);
        QCOMPARE(tip->x() + tip->width(), width - 8.0);
    }
};

QTEST_MAIN(TestPressArea)
#include "tst_press_area.moc"
