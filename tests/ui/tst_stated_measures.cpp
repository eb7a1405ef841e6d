#include "ui/measures.h"
#include "ui/window_states.h"

#include <cmath>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

using Make = std::function<states::Window()>;

const QColor blue(0x007aff);
const QColor orange(0xff9500);
const QColor secondary = QColor::fromRgbF(0, 0, 0, 0.60F);
const QColor quaternary = QColor::fromRgbF(0, 0, 0, 0.07F);

const QColor white(Qt::white);

Measures panel(const QString &place, const QColor &accent, double fill, double stroke)
{
    const auto find = shownBy(place);
    return {of(place, find, "radius", 16.0), of(place, find, "color", faded(accent, fill)),
        of(place, find, "border.width", 1.0),
        of(place, find, "border.color", faded(accent, stroke))};
}

Measures status(const QColor &dot)
{
    return box(u"dot"_s, named(u"statusDot"_s), 8, 8)
        + Measures{of(u"dot"_s, named(u"statusDot"_s), "radius", 4.0),
            of(u"dot"_s, named(u"statusDot"_s), "color", dot)}
    + font(u"status text"_s, named(u"statusText"_s), 11, QFont::Medium);
}

const auto zone = named(u"dropZone"_s);
const auto blueSolid = QColor(0x0068e1);

const auto tagline = text(u"Control which apps can access the network"_s);

const Measures header = box(u"icon"_s, named(u"ownIcon"_s), 46, 46)
    + box(u"help"_s, button(u"Show getting started"_s), 28, 28)
    + box(u"help symbol"_s, symbol(u"questionmark.circle"_s), 22, 22)
    + font(u"title"_s, childOf(parentOf(tagline), 0), 17, QFont::DemiBold)
    + font(u"tagline"_s, tagline, 11, QFont::Normal)
    + box(u"switch"_s, named(u"protectionSwitch"_s), 38, 22)
    + Measures{
        of(u"icon"_s, named(u"ownIcon"_s), "radius", 11.0),
        of(u"help symbol"_s, symbol(u"questionmark.circle"_s), "stroke", 1.85),
        of(u"tagline"_s, tagline, "color", secondary),
        between(u"icon and column"_s, named(u"ownIcon"_s), tagline, gapRight, 12),
        between(u"help and dot"_s, button(u"Show getting started"_s), named(u"statusDot"_s),
            gapRight, 16),
        between(u"dot and text"_s, named(u"statusDot"_s), named(u"statusText"_s), gapRight, 8),
        between(u"text and switch"_s, named(u"statusText"_s), named(u"protectionSwitch"_s),
            gapRight, 18),
    };

const Measures emptyList = box(u"symbol"_s, symbol(u"checkmark.shield"_s), 41, 41)
    + font(u"heading"_s, text(u"Blocked apps"_s), 13, QFont::DemiBold)
    + font(u"badge"_s, text(u"0"_s), 10, QFont::Bold)
    + font(u"title"_s, text(u"No blocked apps"_s), 13, QFont::DemiBold)
    + font(u"line"_s, text(u"Apps you add will appear here."_s), 11, QFont::Normal)
    + Measures{
        of(u"block"_s, named(u"emptyList"_s), "height", 170.0),
        of(u"symbol"_s, symbol(u"checkmark.shield"_s), "stroke", 1.25),
        of(u"line"_s, text(u"Apps you add will appear here."_s), "color", secondary),
        of(u"badge"_s, named(u"countBadge"_s), "color", quaternary),
        of(u"badge text"_s, text(u"0"_s), "color", secondary),
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
        between(u"zone and heading"_s, zone, parentOf(text(u"Blocked apps"_s)), gapBelow, 18),
        between(u"heading and card"_s, parentOf(text(u"Blocked apps"_s)),
            parentOf(named(u"emptyList"_s)), gapBelow, 8),
        of(u"card"_s, parentOf(named(u"emptyList"_s)), "radius", 12.0),
    };

const Measures restingZone = motion(zone, u"scale"_s, 160, QEasingCurve::OutCubic)
    + motion(zone, u"highlight"_s, 160, QEasingCurve::OutCubic)
    + box(u"symbol"_s, named(u"dropZoneSymbol"_s), 48, 48)
    + font(u"headline"_s, named(u"dropZoneTitle"_s), 13, QFont::DemiBold)
    + font(u"line"_s, named(u"dropZoneLine"_s), 11, QFont::Normal)
    + Measures{
        of(u"zone"_s, zone, "height", 165.0),
        of(u"zone"_s, zone, "width", 720.0),
        of(u"zone"_s, zone, "scale", 1.0),
        of(u"zone"_s, zone, "transformOrigin", int(QQuickItem::Center)),
        of(u"fill"_s, named(u"dropZoneFill"_s), "radius", 20.0),
        of(u"fill"_s, named(u"dropZoneFill"_s), "color", faded(blue, 0.06)),
        of(u"border"_s, named(u"dropZoneDashes"_s), "lineWidth", 1.5),
        of(u"border"_s, named(u"dropZoneDashes"_s), "radius", 20.0),
        of(u"border"_s, named(u"dropZoneDashes"_s), "color", faded(blue, 0.45)),
        of(u"symbol"_s, named(u"dropZoneSymbol"_s), "stroke", 1.25),
        of(u"symbol"_s, named(u"dropZoneSymbol"_s), "color", blue),
        of(u"line"_s, named(u"dropZoneLine"_s), "color", secondary),
    };

const Measures hoveredZone{
    of(u"zone"_s, zone, "scale", 1.01),
    of(u"fill"_s, named(u"dropZoneFill"_s), "color", blueSolid),
    of(u"border"_s, named(u"dropZoneOutline"_s), "border.width", 1.5),
    of(u"border"_s, named(u"dropZoneOutline"_s), "border.color", faded(white, 0.65)),
    of(u"border"_s, named(u"dropZoneOutline"_s), "opacity", 1.0),
    of(u"symbol"_s, named(u"dropZoneHighlightedSymbol"_s), "color", white),
    of(u"symbol"_s, named(u"dropZoneHighlightedSymbol"_s), "opacity", 1.0),
    of(u"headline"_s, named(u"dropZoneTitle"_s), "color", white),
    of(u"line"_s, named(u"dropZoneLine"_s), "color", white),
};

const Measures addingZone = font(u"headline"_s, named(u"dropZoneTitle"_s), 13, QFont::DemiBold)
    + font(u"line"_s, named(u"dropZoneLine"_s), 11, QFont::Normal)
    + Measures{
        of(u"zone"_s, zone, "height", 165.0),
        gone(u"symbol"_s, named(u"dropZoneSymbol"_s)),
        gone(u"highlighted symbol"_s, named(u"dropZoneHighlightedSymbol"_s)),
        between(u"spinner beside the centre"_s, zone, named(u"spinner"_s), beside, 0),
        of(u"spinner"_s, named(u"spinner"_s), "color", blue),
        of(u"spinner"_s, named(u"spinner"_s), "width", 32.0),
        of(u"line"_s, named(u"dropZoneLine"_s), "color", secondary),
    };

const auto row = parentOf(named(u"rowIcon"_s));
const auto badge = named(u"blockedBadge"_s);

const Measures list = motion(place(1), u"unfolding"_s, 220, QEasingCurve::InOutQuad)
    + box(u"icon"_s, named(u"rowIcon"_s), 38, 38)
    + font(u"name"_s, named(u"rowName"_s), 13, QFont::Medium)
    + font(u"identifiers"_s, named(u"rowIdentifiers"_s), 11, QFont::Normal)
    + font(u"badge"_s, text(u"Blocked"_s), 10, QFont::Medium)
    + font(u"component"_s, named(u"componentName"_s), 12, QFont::Normal)
    + font(u"kind"_s, named(u"componentKind"_s), 10, QFont::Normal)
    + box(u"component symbol"_s, symbol(u"app"_s), 24, 24)
    + Measures{
        of(u"badge"_s, badge, "color", faded(QColor(0xff3b30), 0.09)),
        of(u"badge"_s, badge, "height", 20.0),
        of(u"badge text"_s, text(u"Blocked"_s), "color", QColor(0xc8101e)),
        of(u"lock"_s, symbol(u"lock.fill"_s), "color", QColor(0xc8101e)),
        of(u"chevron"_s, symbol(u"chevron.right"_s), "stroke", 2.6),
        of(u"chevron, folded"_s, symbol(u"chevron.right"_s), "rotation", 0.0),
        of(u"chevron, unfolded"_s, symbol(u"chevron.right"_s, 1), "rotation", 90.0),
        of(u"disclosure symbol"_s, symbol(u"point.3.connected.trianglepath.dotted"_s), "box", 16),
        of(u"cross"_s, symbol(u"xmark"_s), "stroke", 2.6),
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
        between(u"lock and word"_s, symbol(u"lock.fill"_s), text(u"Blocked"_s), gapRight, 3),
        between(u"divider from the edge"_s, place(1), numbered(u"divider"_s, 1), insetLeft, 68),
        between(
            u"divider from the other edge"_s, place(1), numbered(u"divider"_s, 1), insetRight, 16),
        of(u"divider"_s, numbered(u"divider"_s, 1), "height", 1.0),
        of(u"divider above the first"_s, numbered(u"divider"_s, 0), "height", 0.0),
        of(u"row"_s, place(0), "height", 56.0),
        // The row and its divider; then a divider, a gap, the lines and another gap.
        of(u"row, unfolded"_s, place(1), "height", 56.0 + 1 + 1 + 4 + 3 * 32 + 6),
        of(u"component line"_s, parentOf(named(u"componentName"_s)), "height", 32.0),
    };

const auto updatePanel = shownBy(u"updatePanel"_s);
const Measures update = panel(u"updatePanel"_s, blue, 0.08, 0.25)
    + box(u"symbol"_s, symbol(u"arrow.down.circle.fill"_s), 34, 34)
    + font(u"title"_s, text(u"Zorvane 1.3 is available"_s), 13, QFont::DemiBold)
    + font(u"subtitle"_s, text(u"A new version is ready to download."_s), 11, QFont::Normal)
    + Measures{
        of(u"symbol"_s, symbol(u"arrow.down.circle.fill"_s), "color", blue),
        between(u"padding"_s, updatePanel, symbol(u"arrow.down.circle.fill"_s), insetLeft, 16),
        between(u"symbol and texts"_s, symbol(u"arrow.down.circle.fill"_s),
            text(u"Zorvane 1.3 is available"_s), gapRight, 14),
        between(u"button and cross"_s, button(u"Download Update"_s),
            button(u"Remind me next time"_s), gapRight, 14),
    };

const auto installationPanel = shownBy(u"installationPanel"_s);
const auto installationTitle = text(u"Finish installing Zorvane"_s);
const auto installationText
    = text(u"macOS can only enable Zorvane's network extension when the app is in the "
           "Applications folder. Quit this copy, drag Zorvane from Downloads into Applications, "
           "then open it there."_s);
const Measures installation = panel(u"installationPanel"_s, orange, 0.09, 0.28)
    + font(u"title"_s, installationTitle, 13, QFont::DemiBold)
    + font(u"text"_s, installationText, 11, QFont::Normal)
    + Measures{
        of(u"symbol"_s, symbol(u"arrow.down.app.fill"_s), "color", orange),
        of(u"text"_s, installationText, "color", secondary),
        of(u"text"_s, installationText, "width", 600.0),
        between(u"padding"_s, installationPanel, parentOf(installationTitle), insetTop, 18),
        between(u"padding at the left"_s, installationPanel, installationText, insetLeft, 18),
        between(u"padding below"_s, installationPanel, button(u"Quit Zorvane"_s), insetBottom, 18),
        between(u"label and text"_s, parentOf(installationTitle), installationText, gapBelow, 12),
        between(u"text and buttons"_s, installationText, button(u"Quit Zorvane"_s), gapBelow, 12),
    };

const auto approvalPanel = shownBy(u"approvalPanel"_s);
const auto lastStep = text(u"4. If it is not listed yet, return here and retry activation."_s);
const Measures approval = panel(u"approvalPanel"_s, blue, 0.08, 0.25)
    + box(u"symbol"_s, symbol(u"gear.badge"_s), 34, 34)
    + font(u"title"_s, text(u"Finish enabling protection"_s), 13, QFont::DemiBold)
    + font(u"text"_s, text(u"macOS is waiting for you to approve Zorvane."_s), 11, QFont::Normal)
    + font(u"first line"_s, text(u"1. Open System Settings."_s), 10, QFont::Normal)
    + font(u"last line"_s, lastStep, 10, QFont::Normal)
    + Measures{
        of(u"symbol"_s, symbol(u"gear.badge"_s), "color", blue),
        of(u"text"_s, text(u"macOS is waiting for you to approve Zorvane."_s), "color", secondary),
        between(u"padding"_s, approvalPanel, symbol(u"gear.badge"_s), insetTop, 18),
        between(u"padding at the left"_s, approvalPanel, symbol(u"gear.badge"_s), insetLeft, 18),
        between(u"symbol and column"_s, symbol(u"gear.badge"_s),
            text(u"Finish enabling protection"_s), gapRight, 14),
        // The panel's height is a whole number.
        between(
            u"padding below"_s, approvalPanel, button(u"Retry Activation"_s),
            [](auto &outer, auto &inner) { return std::floor(insetBottom(outer, inner)); }, 18),
        between(u"lines and buttons"_s, lastStep, button(u"Retry Activation"_s), gapBelow, 14),
        of(u"open"_s, button(u"Open System Settings"_s), "prominent", true),
        of(u"retry"_s, button(u"Retry Activation"_s), "prominent", false),
        between(u"panel and zone"_s, approvalPanel, zone, gapBelow, 12),
    };

const Measures twoPanels{
    between(u"the first and the second"_s, updatePanel, installationPanel, gapBelow, 12),
    between(u"the second and the zone"_s, installationPanel, zone, gapBelow, 12),
    between(u"from the edges"_s, named(u"page"_s), updatePanel, insetLeft, 20),
    between(u"from the header"_s, named(u"page"_s), updatePanel, insetTop, 74 + 16),
};

const auto failureText = text(u"Restart your Mac to finish installing the extension."_s);
const Measures failure = status(QColor(0xff3b30)) + font(u"label"_s, failureText, 10, QFont::Normal)
    + Measures{
        of(u"label"_s, failureText, "color", QColor(0xa84e00)),
        of(u"symbol"_s, symbol(u"exclamationmark.triangle.fill"_s), "color", QColor(0xa84e00)),
        of(u"switch"_s, named(u"protectionSwitch"_s), "enabled", true),
    };

} // namespace

/** Every measure that the main window is to have, read from what it shows. */
class TestStatedMeasures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMeasureIsKept_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<Measures>("measures");
        QTest::newRow("header") << Make(states::empty) << header + status(QColor(0x8e8e93));
        QTest::newRow("empty list") << Make(states::empty) << emptyList;
        QTest::newRow("drop zone") << Make(states::empty) << restingZone;
        QTest::newRow("drop zone, hovered") << Make(states::dropHovering) << hoveredZone;
        QTest::newRow("drop zone, adding") << Make(states::adding) << addingZone;
        QTest::newRow("list") << Make(states::listed) << list;
        QTest::newRow("update") << Make(states::updated) << update;
        QTest::newRow("installation")
            << Make(states::installationRequired) << installation + status(orange);
        QTest::newRow("approval") << Make(states::awaitingApproval) << approval + status(orange);
        QTest::newRow("two panels") << Make(states::installationRequiredAndUpdated) << twoPanels;
        QTest::newRow("activating") << Make(states::activating) << status(orange);
        QTest::newRow("enabled") << Make(states::enabled) << status(QColor(0x28b84a));
        QTest::newRow("failed") << Make(states::failed) << failure;
    }

    void everyMeasureIsKept()
    {
        QFETCH(Make, make);
        QFETCH(Measures, measures);
        const auto window = make();
        const auto wrong = wrongMeasures(*window, measures);
        QVERIFY2(wrong.isEmpty(), qUtf8Printable(wrong.join(u'\n')));
    }
};

QTEST_MAIN(TestStatedMeasures)
#include "tst_stated_measures.moc"
