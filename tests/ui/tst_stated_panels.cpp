#include "ui/measure_table.h"

#include <cmath>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const auto zone = named(u"dropZone"_s);

/** The height of a panel is a whole number, that of its texts need not be. */
double insetBottomOfWhole(const QRectF &outer, const QRectF &inner)
{
    return std::floor(insetBottom(outer, inner));
}

/** So is the width of a button. */
double insetLeftOfWhole(const QRectF &outer, const QRectF &inner)
{
    return std::floor(insetLeft(outer, inner));
}

Measures panel(const Find &find)
{
    return {of(u"panel"_s, find, "radius", 16.0), of(u"panel"_s, find, "border.width", 1.0),
        gone(u"shadow"_s, partOf(find, u"shadow"_s))};
}

const auto updatePanel = named(u"updateBox"_s);
const auto updateTexts = named(u"updateContents"_s);
const Measures update = panel(updatePanel)
    + box(u"symbol"_s, symbol(u"arrow.down.circle.fill"_s), 34, 34)
    + font(u"title"_s, text(u"Zorvane 1.3 is available"_s), 13, QFont::DemiBold)
    + font(u"subtitle"_s, text(u"A new version is ready to download."_s), 11, QFont::Normal)
    + Measures{
        of(u"subtitle"_s, text(u"A new version is ready to download."_s), "lineHeight", 1.08),
        of(u"download"_s, button(u"Download Update"_s), "prominent", true),
        between(u"padding"_s, updatePanel, symbol(u"arrow.down.circle.fill"_s), insetLeft, 16),
        between(u"padding above"_s, updatePanel, updateTexts, insetTop, 16),
        between(u"padding below"_s, updatePanel, updateTexts, insetBottomOfWhole, 16),
        between(u"padding at the right"_s, updatePanel, button(u"Remind me next time"_s),
            insetRight, 16),
        between(u"symbol and texts"_s, symbol(u"arrow.down.circle.fill"_s),
            text(u"Zorvane 1.3 is available"_s), gapRight, 14),
        between(u"texts and button"_s, text(u"Zorvane 1.3 is available"_s),
            button(u"Download Update"_s), gapRight, 14),
        between(u"button and cross"_s, button(u"Download Update"_s),
            button(u"Remind me next time"_s), gapRight, 14),
    };

const auto installationPanel = named(u"installationBox"_s);
const auto installationTitle = text(u"Finish installing Zorvane"_s);
const auto installationText
    = text(u"macOS can only enable Zorvane's network extension when the app is in the "
           "Applications folder. Quit this copy, drag Zorvane from Downloads into Applications, "
           "then open it there."_s);
const Measures installation = panel(installationPanel)
    + font(u"title"_s, installationTitle, 13, QFont::DemiBold)
    + font(u"text"_s, installationText, 11, QFont::Normal)
    + Measures{
        of(u"text"_s, installationText, "width", 600.0),
        between(u"padding"_s, installationPanel, named(u"installationHeading"_s), insetTop, 18),
        between(u"padding at the left"_s, installationPanel, installationText, insetLeft, 18),
        between(u"padding at the right"_s, installationPanel, named(u"installationContents"_s),
            insetRight, 18),
        of(u"open"_s, button(u"Open Finder Folders"_s), "prominent", true),
        of(u"quit"_s, button(u"Quit Zorvane"_s), "prominent", false),
        of(u"quit"_s, button(u"Quit Zorvane"_s), "height", 28.0),
        of(u"quit"_s, button(u"Quit Zorvane"_s), "radius", 7.0),
        between(u"open and quit"_s, button(u"Open Finder Folders"_s), button(u"Quit Zorvane"_s),
            gapRight, 8),
        between(u"text of a button"_s, button(u"Quit Zorvane"_s), text(u"Quit Zorvane"_s),
            insetLeftOfWhole, 14),
        of(u"text"_s, installationText, "lineHeight", 1.2),
        between(u"padding below"_s, installationPanel, button(u"Quit Zorvane"_s), insetBottom, 18),
        between(
            u"label and text"_s, named(u"installationHeading"_s), installationText, gapBelow, 12),
        between(u"text and buttons"_s, installationText, button(u"Quit Zorvane"_s), gapBelow, 12),
    };

const auto approvalPanel = named(u"approvalBox"_s);
const auto approvalText = text(u"macOS is waiting for you to approve Zorvane."_s);
const QList<Find> steps{text(u"1. Open System Settings."_s),
    text(u"2. Scroll to Extensions and choose By Category."_s),
    text(u"3. If Network Extensions is listed, open it and enable Zorvane."_s),
    text(u"4. If it is not listed yet, return here and retry activation."_s)};
const Measures approval = panel(approvalPanel) + box(u"symbol"_s, symbol(u"gear.badge"_s), 34, 34)
    + font(u"title"_s, text(u"Finish enabling protection"_s), 13, QFont::DemiBold)
    + font(u"text"_s, approvalText, 11, QFont::Normal)
    + font(u"first line"_s, steps.first(), 10, QFont::Normal)
    + font(u"last line"_s, steps.last(), 10, QFont::Normal)
    + Measures{
        between(u"padding"_s, approvalPanel, symbol(u"gear.badge"_s), insetTop, 18),
        between(u"padding at the left"_s, approvalPanel, symbol(u"gear.badge"_s), insetLeft, 18),
        between(u"symbol and column"_s, symbol(u"gear.badge"_s),
            text(u"Finish enabling protection"_s), gapRight, 14),
        between(u"padding below"_s, approvalPanel, button(u"Retry Activation"_s),
            insetBottomOfWhole, 18),
        between(u"padding at the right"_s, approvalPanel, steps.last(), insetRight, 18),
        of(u"text"_s, approvalText, "lineHeight", 1.08),
        of(u"first line"_s, steps.first(), "lineHeight", 1.08),
        of(u"last line"_s, steps.last(), "lineHeight", 1.08),
        between(
            u"title and text"_s, text(u"Finish enabling protection"_s), approvalText, gapBelow, 3),
        between(u"text and first line"_s, approvalText, steps.at(0), gapBelow, 11),
        between(u"first and second line"_s, steps.at(0), steps.at(1), gapBelow, 5),
        between(u"second and third line"_s, steps.at(1), steps.at(2), gapBelow, 5),
        between(u"third and last line"_s, steps.at(2), steps.at(3), gapBelow, 5),
        between(u"lines and buttons"_s, steps.last(), button(u"Retry Activation"_s), gapBelow, 14),
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

const Measures updateAndApproval{
    between(u"the first and the second"_s, updatePanel, approvalPanel, gapBelow, 12),
    between(u"the second and the zone"_s, approvalPanel, zone, gapBelow, 12),
    between(u"from the header"_s, named(u"page"_s), updatePanel, insetTop, 74 + 16),
};

const auto failureText = text(u"Restart your Mac to finish installing the extension."_s);
const Measures failure = font(u"label"_s, failureText, 10, QFont::Normal)
    + Measures{
        of(u"label"_s, failureText, "lineHeight", 1.08),
        between(u"symbol from the edge"_s, zone, symbol(u"exclamationmark.triangle.fill"_s),
            insetLeft, 2),
        between(u"heading and label"_s, named(u"listHeading"_s), named(u"failure"_s), gapBelow, 8),
        between(u"label and card"_s, named(u"failure"_s), named(u"listCard"_s), gapBelow, 10),
        of(u"switch"_s, named(u"protectionSwitch"_s), "enabled", true),
    };

} // namespace

/** Every measure of the panels and of the failure label, read from what they show. */
class TestStatedPanels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMeasureIsKept_data()
    {
        beginMeasures();
        addMeasures(u"update"_s, states::updated, update);
        addMeasures(u"installation"_s, states::installationRequired, installation);
        addMeasures(u"approval"_s, states::awaitingApproval, approval);
        addMeasures(u"two panels"_s, states::installationRequiredAndUpdated, twoPanels);
        addMeasures(
            u"update and approval"_s, states::awaitingApprovalAndUpdated, updateAndApproval);
        addMeasures(u"failed"_s, states::failed, failure);
    }

    void everyMeasureIsKept() { keepMeasures(); }
};

QTEST_MAIN(TestStatedPanels)
#include "tst_stated_panels.moc"
