#include "ui/measure_table.h"

#include <QJSValue>
#include <QQmlListReference>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using namespace zorvane::tests::colours;

namespace
{

/** The picture of the shadow reaches twice the blur beyond the box. */
Measures shadow(const Find &box, double blur, double down, double strength)
{
    const auto cast = partOf(box, u"shadow"_s);
    return {
        of(u"shadow"_s, cast, "blur", blur),
        of(u"shadow"_s, cast, "opacity", strength),
        of(u"shadow is drawn"_s, cast, "status", 1),
        between(u"shadow, left"_s, cast, box, insetLeft, 2 * blur),
        between(u"shadow, right"_s, cast, box, insetRight, 2 * blur),
        between(u"shadow, top"_s, cast, box, insetTop, 2 * blur - down),
        between(u"shadow, bottom"_s, cast, box, insetBottom, 2 * blur + down),
    };
}

/** What lies under a box, and the box's edge. */
Measures layer(const QString &name, bool dark)
{
    const auto whole = named(name);
    const auto dim = partOf(whole, u"dim"_s);
    const auto edge = partOf(partOf(whole, u"box"_s), u"edge"_s);
    return {
        of(u"dim"_s, dim, "color", black(dark ? 0.45 : 0.25)),
        between(u"dim, left"_s, named(u"page"_s), dim, insetLeft, 0),
        between(u"dim, right"_s, named(u"page"_s), dim, insetRight, 0),
        between(u"dim, bottom"_s, named(u"page"_s), dim, insetBottom, 0),
        of(u"edge"_s, edge, "border.width", dark ? 1 : 0.5),
        of(u"edge"_s, edge, "border.color", dark ? white(0.17) : black(0.15)),
    };
}

const auto header = named(u"header"_s);

/** One of the stops of what the header is filled with. */
Measure stop(int number, const char *property, const QVariant &expected)
{
    return {u"stop %1: %2"_s.arg(number).arg(QLatin1StringView(property)),
        [=](const WindowFixture &window) -> QVariant {
            const auto *const material = partOf(header, u"headerMaterial"_s)(window);
            auto *const gradient = material->property("gradient").value<QJSValue>().toQObject();
            if (gradient == nullptr)
                return {};
            const QQmlListReference stops(gradient, "stops");
            return stops.count() == 3 ? stops.at(number)->property(property) : QVariant();
        },
        expected};
}

Measures headerMaterial(bool dark)
{
    const QColor material(dark ? 0x2e2e30 : 0xf6f6f6);
    const auto line = partOf(header, u"headerLine"_s);
    return {
        stop(0, "position", 0.0),
        stop(0, "color", faded(material, 0.985)),
        stop(1, "position", 0.74),
        stop(1, "color", faded(material, 0.985)),
        stop(2, "position", 1.0),
        stop(2, "color", faded(material, 0.86)),
        of(u"line"_s, line, "height", 1.0),
        of(u"line"_s, line, "color", black(dark ? 0.40 : 0.09)),
        between(u"line at the edge"_s, header, line, insetBottom, 0),
        gone(u"shadow"_s, partOf(header, u"shadow"_s)),
    };
}

Measures sheet(bool dark)
{
    return layer(u"onboarding"_s, dark)
        + shadow(partOf(named(u"onboarding"_s), u"box"_s), 24, 16, dark ? 0.65 : 0.38);
}

Measures alert(bool dark)
{
    return layer(u"alertBox"_s, dark)
        + shadow(partOf(named(u"alertBox"_s), u"box"_s), 20, 12, dark ? 0.60 : 0.35);
}

Measures knob(bool /*dark*/)
{
    return shadow(partOf(named(u"protectionSwitch"_s), u"knob"_s), 3, 1, 0.45);
}

} // namespace

/** What lies over what: materials, edges and shadows, in light and in dark. */
class TestStatedDepth : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMeasureIsKept_data()
    {
        beginMeasures();
        addMeasures(u"header"_s, states::empty, headerMaterial);
        addMeasures(
            u"sheet"_s, [] { return states::guide(0); }, sheet);
        addMeasures(u"alert"_s, states::alerted, alert);
        addMeasures(u"knob"_s, states::empty, knob);
    }

    void everyMeasureIsKept() { keepMeasures(); }
};

QTEST_MAIN(TestStatedDepth)
#include "tst_stated_depth.moc"
