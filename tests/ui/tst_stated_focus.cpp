#include "ui/appearance.h"
#include "ui/measures.h"
#include "ui/window_states.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using namespace zorvane::tests::colours;

namespace
{

/** What gets the keyboard, and how its ring is to stand around it. */
struct Focused {
    std::function<states::Window()> make;
    Find control;
    /** How far the ring's outer edge is outside the control. */
    double outside;
    double radius;
    /** From the control on; what is reached stands in the ring's parent. */
    int stepsDown = 0;
};

/** The one ring that shows. */
QQuickItem *ring(const WindowFixture &window)
{
    const auto all
        = window.items([](const QQuickItem *item) { return item->objectName() == u"focusRing"; });
    return all.size() == 1 ? all.first() : nullptr;
}

const auto retry = button(u"Retry Activation"_s);
const auto open = button(u"Open System Settings"_s);

const QList<std::pair<const char *, Focused>> kinds{
    {"bordered button", {states::awaitingApproval, retry, 1 + 3, 7 + 4}},
    {"prominent button", {states::awaitingApproval, open, 1 + 3, 7 + 4}},
    {"small button", {states::settings, button(u"Check for Updates"_s), 1 + 3, 6 + 4}},
    {"switch", {states::empty, named(u"protectionSwitch"_s), 1 + 3, 11 + 4}},
    {"plain button", {states::empty, button(u"Show getting started"_s), 3, 6 + 3}},
    {"row", {states::listed, place(0), -3, 10}},
    {"line", {states::listed, place(1), 0, 8, 1}},
};

} // namespace

/** The ring around what has the keyboard. */
class TestStatedFocus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRingIsKept_data()
    {
        QTest::addColumn<Focused>("focused");
        QTest::addColumn<bool>("dark");
        for (const auto &[name, focused] : kinds) {
            QTest::addRow("%s, light", name) << focused << false;
            QTest::addRow("%s, dark", name) << focused << true;
        }
    }

    void theRingIsKept()
    {
        QFETCH(Focused, focused);
        QFETCH(bool, dark);
        const Appearance appearance(dark);
        const auto window = focused.make();
        QVERIFY(QTest::qWaitForWindowActive(window->window()));
        QVERIFY(ring(*window) == nullptr);
        focused.control(*window)->forceActiveFocus(Qt::TabFocusReason);
        for (int step = 0; step < focused.stepsDown; ++step)
            QTest::keyClick(window->window(), Qt::Key_Down);
        QTRY_VERIFY(ring(*window) != nullptr);

        const auto colour = dark ? faded(darkBlue, 0.80) : faded(blue, 0.90);
        const auto inside = focused.stepsDown == 0 ? focused.control : named(u"lineCursor"_s);
        const auto wrong = wrongMeasures(*window,
            {
                of(u"ring"_s, ring, "border.width", 3.0),
                of(u"ring"_s, ring, "border.color", colour),
                of(u"ring"_s, ring, "radius", focused.radius),
                between(u"left"_s, ring, inside, insetLeft, focused.outside),
                between(u"right"_s, ring, inside, insetRight, focused.outside),
                between(u"top"_s, ring, inside, insetTop, focused.outside),
                between(u"bottom"_s, ring, inside, insetBottom, focused.outside),
            });
        QVERIFY2(wrong.isEmpty(), qUtf8Printable(wrong.join(u'\n')));
    }
};

QTEST_MAIN(TestStatedFocus)
#include "tst_stated_focus.moc"
