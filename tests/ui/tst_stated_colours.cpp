#include "ui/measure_table.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using namespace zorvane::tests::colours;

namespace
{

/** What is looked at, and its colour in light and in dark. */
struct Shade {
    QString what;
    Find find;
    const char *property;
    QColor light;
    QColor dark;
};

using Shades = QList<Shade>;

ByAppearance inBoth(const Shades &shades)
{
    return [=](bool dark) {
        Measures measures;
        for (const auto &[what, find, property, light, darkened] : shades)
            measures << of(what, find, property, dark ? darkened : light);
        return measures;
    };
}

Shades panel(
    const QString &name, const QColor &light, const QColor &dark, double fill, double stroke)
{
    return {{name, named(name), "color", faded(light, fill), faded(dark, fill)},
        {name, named(name), "border.color", faded(light, stroke), faded(dark, stroke)}};
}

const Shades header{
    {u"title"_s, named(u"headerTitle"_s), "color", primary, white(0.92)},
    {u"tagline"_s, text(u"Control which apps can access the network"_s), "color", secondary,
        white(0.64)},
    {u"help"_s, symbol(u"questionmark.circle"_s), "color", secondary, white(0.64)},
    {u"dot"_s, named(u"statusDot"_s), "color", QColor(0x8e8e93), QColor(0x98989d)},
    {u"status"_s, named(u"statusText"_s), "color", primary, white(0.92)},
};

const Shades restingZone{
    {u"fill"_s, named(u"dropZoneFill"_s), "color", faded(blue, 0.06), faded(darkBlue, 0.06)},
    {u"border"_s, named(u"dropZoneDashes"_s), "color", faded(blue, 0.45), faded(darkBlue, 0.45)},
    {u"symbol"_s, named(u"dropZoneSymbol"_s), "color", blue, darkBlue},
    {u"headline"_s, named(u"dropZoneTitle"_s), "color", primary, white(0.92)},
    {u"line"_s, named(u"dropZoneLine"_s), "color", secondary, white(0.64)},
};

const Shades hoveredZone{
    {u"fill"_s, named(u"dropZoneFill"_s), "color", blueSolid, QColor(0x0a6be0)},
    {u"border"_s, named(u"dropZoneOutline"_s), "border.color", white(0.65), white(0.65)},
    {u"symbol"_s, named(u"dropZoneHighlightedSymbol"_s), "color", white(1), white(1)},
    {u"headline"_s, named(u"dropZoneTitle"_s), "color", white(1), white(1)},
    {u"line"_s, named(u"dropZoneLine"_s), "color", white(1), white(1)},
};

const Shades addingZone{
    {u"spinner"_s, named(u"spinner"_s), "color", blue, darkBlue},
    {u"line"_s, named(u"dropZoneLine"_s), "color", secondary, white(0.64)},
};

const Shades emptyList{
    {u"card"_s, named(u"listCard"_s), "color", white(1), QColor(0x323235)},
    {u"card's edge"_s, partOf(named(u"listCard"_s), u"cardEdge"_s), "border.color", black(0.07),
        white(0.08)},
    {u"heading"_s, text(u"Blocked apps"_s), "color", primary, white(0.92)},
    {u"symbol"_s, symbol(u"checkmark.shield"_s), "color", secondary, white(0.64)},
    {u"title"_s, text(u"No blocked apps"_s), "color", primary, white(0.92)},
    {u"line"_s, text(u"Apps you add will appear here."_s), "color", secondary, white(0.64)},
};

Shades statusIs(const QColor &light, const QColor &dark)
{
    return {{u"dot"_s, named(u"statusDot"_s), "color", light, dark}};
}

const Shades list{
    {u"count badge"_s, named(u"countBadge"_s), "color", quaternary, white(0.12)},
    {u"count"_s, text(u"2"_s), "color", secondary, white(0.64)},
    {u"badge"_s, named(u"blockedBadge"_s), "color", faded(red, 0.09), faded(darkRed, 0.09)},
    {u"badge text"_s, text(u"Blocked"_s), "color", redText, QColor(0xff7a72)},
    {u"lock"_s, symbol(u"lock.fill"_s), "color", redText, QColor(0xff7a72)},
    {u"chevron"_s, symbol(u"chevron.right"_s), "color", secondary, white(0.64)},
    {u"cross"_s, symbol(u"xmark"_s), "color", secondary, white(0.64)},
    {u"component's symbol"_s, named(u"componentSymbol"_s), "color", secondary, white(0.64)},
    {u"component"_s, named(u"componentName"_s), "color", primary, white(0.92)},
    {u"kind"_s, named(u"componentKind"_s), "color", secondary, white(0.64)},
    {u"name"_s, named(u"rowName"_s), "color", primary, white(0.92)},
    {u"identifiers"_s, named(u"rowIdentifiers"_s), "color", secondary, white(0.64)},
    {u"divider"_s, numbered(u"divider"_s, 1), "color", black(0.10), white(0.10)},
    {u"divider above the lines"_s, named(u"linesDivider"_s), "color", black(0.10), white(0.10)},
};

const Shades switchOff{{u"switch"_s, named(u"track"_s), "color", black(0.14), white(0.20)}};

const Shades updatePanel = panel(u"updateBox"_s, blue, darkBlue, 0.08, 0.25)
    + Shades{
        {u"symbol"_s, symbol(u"arrow.down.circle.fill"_s), "color", blue, darkBlue},
        {u"title"_s, text(u"Zorvane 1.3 is available"_s), "color", primary, white(0.92)},
        {u"subtitle"_s, text(u"A new version is ready to download."_s), "color", secondary,
            white(0.64)},
        {u"cross"_s, symbol(u"xmark"_s), "color", secondary, white(0.64)},
    };

const Shades installationPanel = panel(u"installationBox"_s, orange, darkOrange, 0.09, 0.28)
    + Shades{
        {u"symbol"_s, symbol(u"arrow.down.app.fill"_s), "color", orange, darkOrange},
        {u"title"_s, text(u"Finish installing Zorvane"_s), "color", primary, white(0.92)},
        {u"text"_s,
            text(u"macOS can only enable Zorvane's network extension when the app is in the "
                 "Applications folder. Quit this copy, drag Zorvane from Downloads into "
                 "Applications, then open it there."_s),
            "color", secondary, white(0.64)},
    };

const Shades approvalPanel = panel(u"approvalBox"_s, blue, darkBlue, 0.08, 0.25)
    + Shades{
        {u"symbol"_s, symbol(u"gear.badge"_s), "color", blue, darkBlue},
        {u"title"_s, text(u"Finish enabling protection"_s), "color", primary, white(0.92)},
        {u"text"_s, text(u"macOS is waiting for you to approve Zorvane."_s), "color", secondary,
            white(0.64)},
        {u"line"_s, text(u"1. Open System Settings."_s), "color", primary, white(0.92)},
    };

const Shades buttons{
    {u"prominent"_s, text(u"Open System Settings"_s), "color", white(1), white(1)},
    {u"bordered"_s, text(u"Retry Activation"_s), "color", primary, white(0.92)},
};

Shade sheet(const QString &layer)
{
    return {layer, partOf(named(layer), u"box"_s), "color", QColor(0xf2f2f3), QColor(0x2c2c2e)};
}

const Shades guide{
    sheet(u"onboarding"_s),
    {u"square"_s, named(u"onboardingSquare"_s), "color", faded(blue, 0.1), faded(darkBlue, 0.1)},
    {u"symbol"_s, named(u"onboardingSymbol"_s), "color", blue, darkBlue},
    {u"title"_s, named(u"onboardingTitle"_s), "color", primary, white(0.92)},
    {u"message"_s, named(u"onboardingMessage"_s), "color", secondary, white(0.64)},
    {u"mark"_s, named(u"pageMark"_s), "color", blue, darkBlue},
    {u"other mark"_s, numbered(u"pageMark"_s, 1), "color", black(0.25 * 0.60), white(0.25 * 0.64)},
};

const Shades alert{
    sheet(u"alertBox"_s),
    {u"title"_s, named(u"alertTitle"_s), "color", primary, white(0.92)},
    {u"message"_s, text(u"Drop an application with the .app extension."_s), "color", primary,
        white(0.92)},
};

const Shades disabledSwitch{
    {u"switch"_s, named(u"track"_s), "color", black(0.07), white(0.09)},
    {u"knob"_s, named(u"knob"_s), "color", QColor(0xfbfbfb), QColor(0x7c7c80)},
};
const Shades waiting = statusIs(orange, darkOrange) + disabledSwitch;
const Shades switchOn{{u"switch"_s, named(u"track"_s), "color", blue, darkBlue}};

const Find note = named(u"protectionNote"_s);
const Shades settings{
    {u"note"_s, note, "color", secondary, white(0.64)},
    {u"message"_s, named(u"updateMessage"_s), "color", secondary, white(0.64)},
    {u"group"_s, named(u"groupCard"_s), "color", white(1), QColor(0x323235)},
    {u"group's edge"_s, named(u"cardEdge"_s), "border.color", black(0.07), white(0.08)},
};

const Shades failure{
    {u"dot"_s, named(u"statusDot"_s), "color", red, darkRed},
    {u"label"_s, text(u"Restart your Mac to finish installing the extension."_s), "color",
        orangeText, QColor(0xffb340)},
    {u"symbol"_s, symbol(u"exclamationmark.triangle.fill"_s), "color", orangeText, darkOrange},
};

void add(const QString &name, const Make &make, const Shades &shades)
{
    addMeasures(name, make, inBoth(shades));
}

} // namespace

/** The colours that differ between light and dark, in both. */
class TestStatedColours : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyColourIsKept_data()
    {
        beginMeasures();
        add(u"header"_s, states::empty, header + switchOff);
        add(u"drop zone"_s, states::empty, restingZone);
        add(u"drop zone, hovered"_s, states::dropHovering, hoveredZone);
        add(u"drop zone, adding"_s, states::adding, addingZone);
        add(u"empty list"_s, states::empty, emptyList);
        add(u"list"_s, states::listed, list);
        add(u"activating"_s, states::activating, waiting);
        add(u"enabled"_s, states::enabled, statusIs(QColor(0x28b84a), QColor(0x30d158)) + switchOn);
        add(u"update"_s, states::updated, updatePanel);
        add(u"installation"_s, states::installationRequired, installationPanel + waiting);
        add(u"approval"_s, states::awaitingApproval, approvalPanel + buttons + waiting);
        add(u"failed"_s, states::failed, failure);
        add(
            u"guide"_s, [] { return states::guide(0); }, guide);
        add(u"alert"_s, states::alerted, alert);
        add(u"settings"_s, states::settings, settings);
    }

    void everyColourIsKept() { keepMeasures(); }
};

QTEST_MAIN(TestStatedColours)
#include "tst_stated_colours.moc"
