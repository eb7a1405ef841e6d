#include "ui/measure_table.h"

#include <cmath>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

/** What is centred stands on whole pixels, so half a point may be left. */
double besideVerticallyByPixels(const QRectF &outer, const QRectF &inner)
{
    const auto distance = besideVertically(outer, inner);
    return qAbs(distance) <= 0.5 ? 0 : distance;
}

const Measures status = box(u"dot"_s, named(u"statusDot"_s), 8, 8)
    + Measures{of(u"dot"_s, named(u"statusDot"_s), "radius", 4.0)}
    + font(u"status text"_s, named(u"statusText"_s), 11, QFont::Medium);

const auto zone = named(u"dropZone"_s);

const auto tagline = text(u"Control which apps can access the network"_s);

const Measures header = box(u"icon"_s, named(u"ownIcon"_s), 46, 46)
    + box(u"help"_s, button(u"Show getting started"_s), 28, 28)
    + box(u"help symbol"_s, symbol(u"questionmark.circle"_s), 22, 22)
    + font(u"title"_s, named(u"headerTitle"_s), 17, QFont::DemiBold)
    + font(u"tagline"_s, tagline, 11, QFont::Normal)
    + box(u"switch"_s, named(u"protectionSwitch"_s), 38, 22)
    + box(u"knob"_s, partOf(named(u"protectionSwitch"_s), u"knob"_s), 19, 19)
    + Measures{
        of(u"header"_s, named(u"header"_s), "height", 74.0),
        between(u"icon from the edge"_s, named(u"header"_s), named(u"ownIcon"_s), insetLeft, 20),
        between(u"icon from above"_s, named(u"header"_s), named(u"ownIcon"_s), insetTop, 14),
        between(u"switch from the other edge"_s, named(u"header"_s), named(u"protectionSwitch"_s),
            insetRight, 20),
        between(u"help below the icon's middle"_s, named(u"ownIcon"_s),
            button(u"Show getting started"_s), besideVertically, 0),
        between(u"dot below the icon's middle"_s, named(u"ownIcon"_s), named(u"statusDot"_s),
            besideVertically, 0),
        between(u"switch below the icon's middle"_s, named(u"ownIcon"_s),
            named(u"protectionSwitch"_s), besideVertically, 0),
        between(u"title and tagline"_s, named(u"headerTitle"_s), tagline, gapBelow, 2),
        of(u"help"_s, button(u"Show getting started"_s), "radius", 6.0),
        of(u"icon"_s, named(u"ownIcon"_s), "radius", 11.0),
        of(u"icon is drawn"_s, named(u"ownIcon"_s), "status", 1),
        of(u"help symbol"_s, symbol(u"questionmark.circle"_s), "stroke", 1.85),
        between(u"icon and column"_s, named(u"ownIcon"_s), tagline, gapRight, 12),
        between(u"help and dot"_s, button(u"Show getting started"_s), named(u"statusDot"_s),
            gapRight, 16),
        between(u"dot and text"_s, named(u"statusDot"_s), named(u"statusText"_s), gapRight, 8),
        between(u"text and switch"_s, named(u"statusText"_s), named(u"protectionSwitch"_s),
            gapRight, 18),
    };

const auto emptyContents = named(u"emptyListContents"_s);
const auto heading = named(u"listHeading"_s);
const auto card = named(u"listCard"_s);
const Measures emptyList = box(u"symbol"_s, symbol(u"checkmark.shield"_s), 41, 41)
    + font(u"heading"_s, text(u"Blocked apps"_s), 13, QFont::DemiBold)
    + font(u"badge"_s, text(u"0"_s), 10, QFont::Bold)
    + font(u"title"_s, text(u"No blocked apps"_s), 13, QFont::DemiBold)
    + font(u"line"_s, text(u"Apps you add will appear here."_s), 11, QFont::Normal)
    + Measures{
        of(u"block"_s, named(u"emptyList"_s), "height", 170.0),
        between(u"contents beside the centre"_s, named(u"emptyList"_s), emptyContents, beside, 0),
        between(u"contents below the centre"_s, named(u"emptyList"_s), emptyContents,
            besideVerticallyByPixels, 0),
        of(u"line"_s, text(u"Apps you add will appear here."_s), "lineHeight", 1.08),
        of(u"symbol"_s, symbol(u"checkmark.shield"_s), "stroke", 1.25),
        between(
            u"badge, above and below"_s, named(u"countBadge"_s), text(u"0"_s),
            [](auto &outer, auto &inner) { return outer.height() - inner.height(); }, 8),
        between(
            u"badge, left and right"_s, named(u"countBadge"_s), text(u"0"_s),
            [](auto &outer, auto &inner) { return outer.width() - std::ceil(inner.width()); }, 18),
        {u"badge, rounded"_s,
            [](const WindowFixture &window) -> QVariant {
                const auto *const badge = window.item(u"countBadge"_s);
                return badge->property("radius").toReal() / badge->height();
            },
            0.5},
        between(u"badge text below the middle"_s, named(u"countBadge"_s), text(u"0"_s),
            besideVertically, 0.5),
        between(u"heading from the edge"_s, zone, text(u"Blocked apps"_s), insetLeft, 2),
        of(u"heading"_s, heading, "height", 22.0),
        of(u"card's edge"_s, partOf(card, u"cardEdge"_s), "border.width", 1.0),
        gone(u"card's shadow"_s, partOf(card, u"shadow"_s)),
        between(u"zone and heading"_s, zone, heading, gapBelow, 18),
        between(u"heading and card"_s, heading, card, gapBelow, 8),
        of(u"card"_s, card, "radius", 12.0),
    };

const auto zoneContents = named(u"dropZoneContents"_s);
const Measures centredInZone{
    between(u"contents beside the centre"_s, zone, zoneContents, beside, 0),
    between(u"contents below the centre"_s, zone, zoneContents, besideVerticallyByPixels, 0),
    of(u"line"_s, named(u"dropZoneLine"_s), "lineHeight", 1.08),
};

const Measures restingZone = motion(zone, u"scale"_s, 160, QEasingCurve::OutCubic)
    + motion(zone, u"highlight"_s, 160, QEasingCurve::OutCubic)
    + box(u"symbol"_s, named(u"dropZoneSymbol"_s), 48, 48)
    + font(u"headline"_s, named(u"dropZoneTitle"_s), 13, QFont::DemiBold)
    + font(u"line"_s, named(u"dropZoneLine"_s), 11, QFont::Normal) + centredInZone
    + Measures{
        of(u"symbol"_s, named(u"dropZoneSymbol"_s), "name", u"app.dashed"_s),
        of(u"zone"_s, zone, "height", 165.0),
        of(u"zone"_s, zone, "width", 720.0),
        of(u"zone"_s, zone, "scale", 1.0),
        of(u"zone"_s, zone, "transformOrigin", int(QQuickItem::Center)),
        of(u"fill"_s, named(u"dropZoneFill"_s), "radius", 20.0),
        of(u"border"_s, named(u"dropZoneDashes"_s), "lineWidth", 1.5),
        of(u"border"_s, named(u"dropZoneDashes"_s), "radius", 20.0),
        of(u"symbol"_s, named(u"dropZoneSymbol"_s), "stroke", 1.25),
    };

const Measures hoveredZone{
    of(u"zone"_s, zone, "scale", 1.01),
    of(u"border"_s, named(u"dropZoneOutline"_s), "border.width", 1.5),
    // It would be drawn 2 wide.
    of(u"border"_s, named(u"dropZoneOutline"_s), "border.pixelAligned", false),
    of(u"border"_s, named(u"dropZoneOutline"_s), "opacity", 1.0),
    of(u"symbol"_s, named(u"dropZoneHighlightedSymbol"_s), "name", u"app.dashed"_s),
    of(u"symbol"_s, named(u"dropZoneHighlightedSymbol"_s), "box", 48),
    of(u"symbol"_s, named(u"dropZoneHighlightedSymbol"_s), "stroke", 1.25),
    of(u"symbol"_s, named(u"dropZoneHighlightedSymbol"_s), "opacity", 1.0),
};

const Measures addingZone = font(u"headline"_s, named(u"dropZoneTitle"_s), 13, QFont::DemiBold)
    + font(u"line"_s, named(u"dropZoneLine"_s), 11, QFont::Normal) + centredInZone
    + Measures{
        of(u"zone"_s, zone, "height", 165.0),
        gone(u"symbol"_s, named(u"dropZoneSymbol"_s)),
        gone(u"highlighted symbol"_s, named(u"dropZoneHighlightedSymbol"_s)),
        between(u"spinner beside the centre"_s, zone, named(u"spinner"_s), beside, 0),
        of(u"spinner"_s, named(u"spinner"_s), "width", 32.0),
    };

/** That two texts stand on one line. */
Measure baselines(const QString &what, const Find &first, const Find &second)
{
    return {what,
        [=](const WindowFixture &window) -> QVariant {
            const auto baseline = [&](const Find &find) {
                const auto *const item = find(window);
                return item->mapToScene(QPointF(0, item->baselineOffset())).y();
            };
            return first(window) == nullptr || second(window) == nullptr
                ? QVariant()
                : baseline(second) - baseline(first);
        },
        0.0};
}

const auto row = named(u"rowLine"_s);
const auto badge = named(u"blockedBadge"_s);

const Measures list = motion(place(1), u"unfolding"_s, 220, QEasingCurve::InOutQuad)
    + box(u"icon"_s, named(u"rowIcon"_s), 38, 38) + box(u"lock"_s, symbol(u"lock.fill"_s), 12, 12)
    + box(u"disclosure"_s, named(u"disclosure"_s), 164, 24)
    + box(u"chevron"_s, symbol(u"chevron.right"_s), 12, 12)
    + box(u"cross"_s, button(u"Remove from list"_s), 24, 24)
    + font(u"name"_s, named(u"rowName"_s), 13, QFont::Medium)
    + font(u"identifiers"_s, named(u"rowIdentifiers"_s), 11, QFont::Normal)
    + font(u"badge"_s, text(u"Blocked"_s), 10, QFont::Medium)
    + font(u"component"_s, named(u"componentName"_s), 12, QFont::Normal)
    + font(u"kind"_s, named(u"componentKind"_s), 10, QFont::Normal)
    + box(u"component symbol"_s, symbol(u"app"_s), 24, 24)
    + Measures{
        of(u"badge"_s, badge, "height", 20.0),
        of(u"badge"_s, badge, "radius", 6.0),
        of(u"lock"_s, symbol(u"lock.fill"_s), "stroke", 2.15),
        of(u"component symbol"_s, symbol(u"app"_s), "stroke", 1.4),
        baselines(u"name and kind"_s, named(u"componentName"_s), named(u"componentKind"_s)),
        of(u"chevron"_s, symbol(u"chevron.right"_s), "stroke", 2.6),
        of(u"chevron, folded"_s, symbol(u"chevron.right"_s), "rotation", 0.0),
        of(u"chevron, unfolded"_s, symbol(u"chevron.right"_s, 1), "rotation", 90.0),
        of(u"disclosure symbol"_s, symbol(u"point.3.connected.trianglepath.dotted"_s), "box", 16),
        of(u"cross"_s, symbol(u"xmark"_s), "stroke", 2.6),
        of(u"icon is drawn"_s, named(u"rowIcon"_s), "status", 1),
        between(u"icon below the middle"_s, row, named(u"rowIcon"_s), besideVertically, 0),
        between(u"badge below the middle"_s, row, badge, besideVertically, 0),
        between(u"disclosure below the middle"_s, row, named(u"disclosure"_s), besideVertically, 0),
        between(
            u"cross below the middle"_s, row, button(u"Remove from list"_s), besideVertically, 0),
        between(u"name and identifiers"_s, named(u"rowName"_s), named(u"rowIdentifiers"_s),
            gapBelow, 2),
        between(u"identifiers from the edge"_s, row, named(u"rowIdentifiers"_s), insetLeft, 68),
        between(u"component's name from the edge"_s, row, named(u"componentName"_s), insetLeft,
            68 + 24 + 8),
        between(u"row and divider"_s, place(0), numbered(u"divider"_s, 1), gapBelow, 0),
        between(u"icon from the edge"_s, row, named(u"rowIcon"_s), insetLeft, 16),
        between(u"name from the edge"_s, row, named(u"rowName"_s), insetLeft, 68),
        between(u"components from the edge"_s, row, symbol(u"app"_s), insetLeft, 68),
        between(u"kinds from the other edge"_s, row, named(u"componentKind"_s), insetRight, 20),
        between(u"cross from the other edge"_s, row, button(u"Remove from list"_s), insetRight, 12),
        between(u"badge and disclosure"_s, badge, named(u"disclosure"_s), gapRight, 10),
        between(u"disclosure and cross"_s, named(u"disclosure"_s), button(u"Remove from list"_s),
            gapRight, 10),
        between(u"badge, left"_s, badge, symbol(u"lock.fill"_s), insetLeft, 7.5),
        between(u"badge, right"_s, badge, text(u"Blocked"_s), insetRight, 7.5),
        between(u"word below the middle"_s, badge, text(u"Blocked"_s), besideVertically, 0.5),
        between(u"lock and word"_s, symbol(u"lock.fill"_s), text(u"Blocked"_s), gapRight, 3),
        between(u"divider from the edge"_s, place(1), numbered(u"divider"_s, 1), insetLeft, 68),
        between(
            u"divider from the other edge"_s, place(1), numbered(u"divider"_s, 1), insetRight, 16),
        of(u"divider"_s, numbered(u"divider"_s, 1), "height", 1.0),
        of(u"divider above the first"_s, numbered(u"divider"_s, 0), "height", 0.0),
        of(u"row"_s, place(0), "height", 56.0),
        of(u"divider above the lines"_s, named(u"linesDivider"_s), "height", 1.0),
        between(u"divider above the lines from the edge"_s, place(1), named(u"linesDivider"_s),
            insetLeft, 68),
        between(u"divider and first line"_s, named(u"linesDivider"_s), named(u"componentLine"_s),
            gapBelow, 4),
        // The row and its divider; then a divider, a gap, the lines and another gap.
        of(u"row, unfolded"_s, place(1), "height", 56.0 + 1 + 1 + 4 + 3 * 32 + 6),
        of(u"component line"_s, named(u"componentLine"_s), "height", 32.0),
    };

} // namespace

/** Every measure of the header, the drop zone and the list, read from what they show. */
class TestStatedMeasures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMeasureIsKept_data()
    {
        beginMeasures();
        addMeasures(u"header"_s, states::empty, header + status);
        addMeasures(u"empty list"_s, states::empty, emptyList);
        addMeasures(u"drop zone"_s, states::empty, restingZone);
        addMeasures(u"drop zone, hovered"_s, states::dropHovering, hoveredZone);
        addMeasures(u"drop zone, adding"_s, states::adding, addingZone);
        addMeasures(u"list"_s, states::listed, list);
    }

    void everyMeasureIsKept() { keepMeasures(); }
};

QTEST_MAIN(TestStatedMeasures)
#include "tst_stated_measures.moc"
