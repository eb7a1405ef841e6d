#include "ui/measure_table.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using namespace zorvane::tests::colours;

namespace
{

const auto alertLayer = named(u"alertBox"_s);

states::Window alertComing()
{
    auto window = states::empty();
    window->raiseAlert();
    return window;
}

states::Window alertGoing()
{
    auto window = states::alerted();
    window->click(window->button(u"OK"_s));
    return window;
}

states::Window unfoldedBy(double part)
{
    auto window = states::listed();
    window->item(u"componentLines"_s)->setProperty("unfolding", part);
    return window;
}

states::Window plainButtonLit()
{
    auto window = states::empty();
    window->button(u"Show getting started"_s)->setProperty("lit", true);
    return window;
}

/** The scale that the box of an alert begins with, told by one between that and its end. */
const Measure firstScale{u"first scale"_s,
    [](const WindowFixture &window) -> QVariant {
        const auto *const layer = alertLayer(window);
        const auto *const box = partOf(alertLayer, u"box"_s)(window);
        if (box == nullptr || layer->opacity() >= 1)
            return {};
        return (box->scale() - layer->opacity()) / (1 - layer->opacity());
    },
    0.96};

const Measure spinnerStep{u"spinner's step"_s,
    [](const WindowFixture &window) -> QVariant {
        const auto children = named(u"spinner"_s)(window)->children();
        const auto timer = std::find_if(children.cbegin(), children.cend(),
            [](const QObject *child) { return child->property("interval").isValid(); });
        return timer == children.cend() ? QVariant() : (*timer)->property("interval");
    },
    1000 / 12};

const Measure spokes{u"spokes"_s,
    [](const WindowFixture &window) -> QVariant {
        const auto *const spinner = named(u"spinner"_s)(window);
        const auto shown = window.items([&](const QQuickItem *item) {
            return spinner->isAncestorOf(item) && item->inherits("QQuickRectangle");
        });
        return int(shown.size());
    },
    12};

} // namespace

/** How long things take to come, go and change, and by which curve. */
class TestStatedMotion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMotionIsKept_data()
    {
        beginMeasures();
        const auto lines = named(u"componentLines"_s);
        addMeasures(u"panel"_s, states::updated,
            motion(named(u"updatePanel"_s), u"progress"_s, 200, QEasingCurve::OutCubic));
        addMeasures(u"alert, in"_s, states::alerted,
            motion(alertLayer, u"opacity"_s, 180, QEasingCurve::OutCubic));
        addMeasures(u"alert, out"_s, alertGoing,
            motion(alertLayer, u"opacity"_s, 120, QEasingCurve::OutCubic));
        addMeasures(u"alert, scale"_s, alertComing, Measures{firstScale});
        addMeasures(u"switch"_s, states::empty,
            motion(partOf(named(u"protectionSwitch"_s), u"knob"_s), u"x"_s, 180,
                QEasingCurve::InOutQuad));
        addMeasures(u"hovered button"_s, states::awaitingApproval,
            motion(partOf(button(u"Retry Activation"_s), u"hoverFace"_s), u"opacity"_s, 100,
                QEasingCurve::Linear));
        addMeasures(u"hovered plain button"_s, plainButtonLit,
            motion(partOf(button(u"Show getting started"_s), u"plainFace"_s), u"opacity"_s, 100,
                QEasingCurve::Linear));
        addMeasures(u"spinner"_s, states::adding, Measures{spinnerStep, spokes});
        addMeasures(
            u"lines, at half"_s, [] { return unfoldedBy(0.5); },
            Measures{of(u"lines"_s, lines, "opacity", 0.0)});
        addMeasures(
            u"lines, at three quarters"_s, [] { return unfoldedBy(0.75); },
            Measures{of(u"lines"_s, lines, "opacity", 0.5)});
    }

    void everyMotionIsKept() { keepMeasures(); }
};

QTEST_MAIN(TestStatedMotion)
#include "tst_stated_motion.moc"
