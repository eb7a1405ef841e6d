#include "ui/measure_table.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

Measure windowIs(const char *property, double expected)
{
    return {QLatin1StringView(property),
        [=](const WindowFixture &window) { return window.window()->property(property); }, expected};
}

Find mark(int number)
{
    return numbered(u"pageMark"_s, number);
}

const auto content = named(u"page"_s);
const auto square = named(u"onboardingSquare"_s);
const auto message = named(u"onboardingMessage"_s);
const auto sheet = partOf(named(u"onboarding"_s), u"box"_s);

const auto page = named(u"onboardingPage"_s);

/** One that does not show: what a page comes from. */
QQuickItem *otherPage(const WindowFixture &window)
{
    const auto *const shown = page(window);
    const auto all = shown == nullptr ? QList<QQuickItem *>() : shown->parentItem()->childItems();
    const auto found = std::find_if(all.cbegin(), all.cend(), [&](const QQuickItem *item) {
        return item->objectName() == shown->objectName() && !item->isVisible();
    });
    return found == all.cend() ? nullptr : *found;
}

const Measures guide = motion(page, u"opacity"_s, 180, QEasingCurve::OutCubic)
    + motion(page, u"scale"_s, 180, QEasingCurve::OutCubic)
    + motion(mark(3), u"width"_s, 180, QEasingCurve::OutCubic) + box(u"sheet"_s, sheet, 540, 404)
    + box(u"square"_s, square, 100, 100) + box(u"symbol"_s, named(u"onboardingSymbol"_s), 60, 60)
    + font(u"title"_s, text(u"Drop In an App"_s), 22, QFont::Bold)
    + font(u"message"_s, message, 13, QFont::Normal) + box(u"mark"_s, mark(3), 22, 7)
    + box(u"other mark"_s, mark(0), 7, 7) + box(u"other mark"_s, mark(4), 7, 7)
    + Measures{
        of(u"sheet"_s, sheet, "radius", 14.0),
        between(u"sheet, right of the middle"_s, content, sheet, beside, 0),
        between(u"sheet, below the middle"_s, content, sheet, besideVertically, 0),
        of(u"square"_s, square, "radius", 26.0),
        of(u"symbol"_s, named(u"onboardingSymbol"_s), "stroke", 1.85),
        of(u"message"_s, message, "width", 420.0),
        of(u"message"_s, message, "lineHeight", 1.2),
        of(u"mark"_s, mark(3), "radius", 3.5),
        of(u"Back"_s, button(u"Back"_s), "enabled", true),
        of(u"Back"_s, button(u"Back"_s), "prominent", false),
        of(u"Back"_s, button(u"Back"_s), "width", 84.0),
        between(u"Skip from the top"_s, sheet, button(u"Skip"_s), insetTop, 16),
        between(u"Skip from the edge"_s, sheet, button(u"Skip"_s), insetRight, 16),
        of(u"Continue"_s, button(u"Continue"_s), "width", 104.0),
        of(u"Continue"_s, button(u"Continue"_s), "prominent", true),
        of(u"title"_s, text(u"Drop In an App"_s), "horizontalAlignment", int(Qt::AlignHCenter)),
        of(u"message"_s, message, "horizontalAlignment", int(Qt::AlignHCenter)),
        of(u"page"_s, page, "transformOrigin", int(QQuickItem::Center)),
        of(u"page"_s, otherPage, "scale", 0.97),
        of(u"page"_s, otherPage, "opacity", 0.0),
        between(u"square beside the centre"_s, sheet, square, beside, 0),
        between(u"title beside the centre"_s, sheet, text(u"Drop In an App"_s), beside, 0),
        between(u"message beside the centre"_s, sheet, message, beside, 0),
    };

/** At every page the same, but for the symbol. */
Measures anyPage(const QString &symbol)
{
    return {
        of(u"symbol"_s, named(u"onboardingSymbol"_s), "name", symbol),
        between(u"square from the top"_s, sheet, square, insetTop, 58),
        between(
            u"title from the top"_s, sheet, named(u"onboardingTitle"_s), insetTop, 58 + 100 + 26),
    };
}

const auto alertBox = partOf(named(u"alertBox"_s), u"box"_s);
const auto alertIcon = named(u"alertIcon"_s);

const Measures alert = box(u"icon"_s, alertIcon, 64, 64)
    + font(u"title"_s, named(u"alertTitle"_s), 13, QFont::Bold)
    + font(u"message"_s, text(u"Drop an application with the .app extension."_s), 11, QFont::Normal)
    + Measures{
        of(u"box"_s, alertBox, "width", 280.0),
        between(u"box, right of the middle"_s, content, alertBox, beside, 0),
        between(u"box, below the middle"_s, content, alertBox, besideVertically, -20),
        of(u"box"_s, alertBox, "radius", 12.0),
        of(u"button"_s, button(u"OK"_s), "height", 28.0),
        of(u"button"_s, button(u"OK"_s), "prominent", true),
        between(u"icon beside the middle"_s, alertBox, alertIcon, beside, 0),
        of(u"button"_s, button(u"OK"_s), "width", 248.0),
    };

const auto note = named(u"protectionNote"_s);
const auto updateMessage = named(u"updateMessage"_s);
const auto check = button(u"Check for Updates"_s);
const Find settingsPage
    = [](const WindowFixture &window) { return window.window()->contentItem(); };
const auto group = named(u"groupCard"_s);

const Measures settings = font(u"section"_s, text(u"Protection"_s), 13, QFont::DemiBold)
    + font(u"section"_s, text(u"Updates"_s), 13, QFont::DemiBold)
    + font(u"label"_s, text(u"Enable network filter"_s), 13, QFont::Normal)
    + font(u"note"_s, note, 10, QFont::Normal)
    + font(u"message"_s, updateMessage, 10, QFont::Normal)
    + Measures{
        windowIs("width", 460),
        windowIs("height", 520),
        windowIs("minimumWidth", 460),
        windowIs("maximumWidth", 460),
        windowIs("minimumHeight", 520),
        windowIs("maximumHeight", 520),
        of(u"note"_s, note, "lineHeight", 1.08),
        of(u"message"_s, updateMessage, "lineHeight", 1.08),
        of(u"group"_s, group, "radius", 10.0),
        of(u"group"_s, group, "width", 420.0),
        of(u"switch"_s, named(u"smallSwitch"_s), "scale", 0.82),
        of(u"check"_s, check, "height", 24.0),
        of(u"check"_s, check, "radius", 6.0),
        between(
            u"switch and note"_s, named(u"protectionSwitch"_s), note,
            [](auto &toggle, auto &below) { return double(toggle.bottom() < below.top()); }, 1),
        between(u"section from the edge"_s, settingsPage, group, insetLeft, 20),
        between(u"section from the top"_s, settingsPage, text(u"Protection"_s), insetTop, 20),
        between(u"contents from the edge"_s, group, note, insetLeft, 14),
        between(u"button and message"_s, check, updateMessage, gapBelow, 9),
    };

const Measures settingsWithUpdate{
    of(u"download"_s, button(u"Download Update"_s), "prominent", true),
    of(u"check"_s, check, "prominent", false),
    between(u"available below current"_s, named(u"currentVersion"_s), named(u"availableVersion"_s),
        gapBelow, 1),
    between(u"download below available"_s, named(u"availableVersion"_s),
        button(u"Download Update"_s), gapBelow, 11),
    between(u"check below download"_s, button(u"Download Update"_s), check, gapBelow, 21),
};

const Measures mainWindow{
    windowIs("width", 760),
    windowIs("height", 650 + WindowFixture::menuBarHeight),
    windowIs("minimumWidth", 680),
    windowIs("minimumHeight", 560 + WindowFixture::menuBarHeight),
    of(u"content"_s, named(u"page"_s), "height", 650.0),
};

} // namespace

/** The measures of the windows themselves, of the boxes over them, and of the settings. */
class TestMeasuresOfBoxes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMeasureIsKept_data()
    {
        beginMeasures();
        addMeasures(u"main window"_s, states::empty, mainWindow);
        const auto guideAt = [](int number) { return [=] { return states::guide(number); }; };
        addMeasures(u"guide"_s, guideAt(3), guide);
        addMeasures(u"guide, first page"_s, guideAt(0),
            Measures{of(u"Back"_s, button(u"Back"_s), "enabled", false),
                of(u"Back"_s, button(u"Back"_s), "opacity", 0.4)});
        const QStringList symbols{u"shield.lefthalf.filled"_s, u"arrow.down.app.fill"_s,
            u"switch.2"_s, u"app.dashed"_s, u"questionmark.circle"_s};
        for (int number = 0; number < symbols.size(); ++number)
            addMeasures(
                u"guide, page %1"_s.arg(number + 1), guideAt(number), anyPage(symbols.at(number)));
        addMeasures(u"alert"_s, states::alerted, alert);
        addMeasures(u"settings"_s, states::settings, settings);
        addMeasures(u"settings with an update"_s, states::settingsWithUpdate,
            settings + settingsWithUpdate);
    }

    void everyMeasureIsKept() { keepMeasures(); }
};

QTEST_MAIN(TestMeasuresOfBoxes)
#include "tst_measures_of_boxes.moc"
