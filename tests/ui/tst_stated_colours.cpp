#include "ui/appearance.h"
#include "ui/measures.h"
#include "ui/window_states.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

using Make = std::function<states::Window()>;

/** What is looked at, and its colour in light and in dark. */
struct Shade {
    QString what;
    Find find;
    const char *property;
    QColor light;
    QColor dark;
};

using Shades = QList<Shade>;

const QColor blue(0x007aff);
const QColor darkBlue(0x0a84ff);
const QColor orange(0xff9500);
const QColor darkOrange(0xff9f0a);

QColor black(double opacity)
{
    return faded(QColor(Qt::black), opacity);
}

QColor white(double opacity)
{
    return faded(QColor(Qt::white), opacity);
}

Shades panel(
    const QString &place, const QColor &light, const QColor &dark, double fill, double stroke)
{
    return {{place, shownBy(place), "color", faded(light, fill), faded(dark, fill)},
        {place, shownBy(place), "border.color", faded(light, stroke), faded(dark, stroke)}};
}

const Shades list{
    {u"count badge"_s, named(u"countBadge"_s), "color", black(0.07), white(0.12)},
    {u"badge"_s, named(u"blockedBadge"_s), "color", faded(QColor(0xff3b30), 0.09),
        faded(QColor(0xff453a), 0.09)},
    {u"badge text"_s, text(u"Blocked"_s), "color", QColor(0xc8101e), QColor(0xff7a72)},
    {u"name"_s, named(u"rowName"_s), "color", black(0.86), white(0.92)},
    {u"identifiers"_s, named(u"rowIdentifiers"_s), "color", black(0.60), white(0.64)},
    {u"divider"_s, numbered(u"divider"_s, 1), "color", black(0.10), white(0.10)},
};

const Shades enabledSwitch{{u"switch"_s, named(u"track"_s), "color", black(0.14), white(0.20)}};

const Shades guide{
    {u"sheet"_s, childOf(named(u"onboarding"_s), 1), "color", QColor(0xf2f2f3), QColor(0x2c2c2e)}};
const Shades alert{
    {u"box"_s, childOf(named(u"alertBox"_s), 1), "color", QColor(0xf2f2f3), QColor(0x2c2c2e)}};
const Shades disabledSwitch{{u"switch"_s, named(u"track"_s), "color", black(0.07), white(0.09)}};

const Find note = named(u"protectionNote"_s);
const Shades settings{
    {u"note"_s, note, "color", black(0.60), white(0.64)},
    {u"group"_s, parentOf(parentOf(parentOf(note))), "color", QColor(Qt::white), QColor(0x323235)},
};

const Shades failure{
    {u"dot"_s, named(u"statusDot"_s), "color", QColor(0xff3b30), QColor(0xff453a)},
    {u"label"_s, text(u"Restart your Mac to finish installing the extension."_s), "color",
        QColor(0xa84e00), QColor(0xffb340)},
};

} // namespace

/** The colours that differ between light and dark, in both. */
class TestStatedColours : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyColourIsKept_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<Shades>("shades");
        QTest::newRow("off") << Make(states::empty) << enabledSwitch;
        QTest::newRow("list") << Make(states::listed) << list;
        QTest::newRow("update") << Make(states::updated)
                                << panel(u"updatePanel"_s, blue, darkBlue, 0.08, 0.25);
        QTest::newRow("installation")
            << Make(states::installationRequired)
            << panel(u"installationPanel"_s, orange, darkOrange, 0.09, 0.28) + disabledSwitch;
        QTest::newRow("approval") << Make(states::awaitingApproval)
                                  << panel(u"approvalPanel"_s, blue, darkBlue, 0.08, 0.25)
                + disabledSwitch;
        QTest::newRow("failed") << Make(states::failed) << failure;
        QTest::newRow("guide") << Make([] { return states::guide(0); }) << guide;
        QTest::newRow("alert") << Make(states::alerted) << alert;
        QTest::newRow("settings") << Make(states::settings) << settings;
    }

    void everyColourIsKept()
    {
        QFETCH(Make, make);
        QFETCH(Shades, shades);
        QStringList wrong;
        for (const bool dark : {false, true}) {
            const Appearance appearance(dark);
            const auto window = make();
            QTRY_COMPARE(window->window()->color(), Appearance::window(dark));
            Measures measures;
            for (const auto &[what, find, property, light, darkened] : shades)
                measures << of(what, find, property, dark ? darkened : light);
            for (const auto &each : wrongMeasures(*window, measures))
                wrong << (dark ? u"dark: "_s : u"light: "_s) + each;
        }
        QVERIFY2(wrong.isEmpty(), qUtf8Printable(wrong.join(u'\n')));
    }
};

QTEST_MAIN(TestStatedColours)
#include "tst_stated_colours.moc"
