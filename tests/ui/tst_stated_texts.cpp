#include "ui/window_states.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

/** Where a text is looked for. */
enum class Told {
    Shown, ///< as a text of its own
    Button, ///< as what a button says
    ToolTip, ///< as what a button without words tells of itself
    Name, ///< only to assistive technology
    Zone, ///< to assistive technology, of the drop zone
    Value, ///< at the right of its line, beside the name before the bar
    Title, ///< of the window
};

struct Text {
    Told told;
    QString text;
    int times = 1;
};

using Make = std::function<states::Window()>;
using Texts = QList<Text>;

int timesTold(const WindowFixture &window, const Text &row)
{
    const auto count = [&](const auto &wanted) { return int(window.items(wanted).size()); };
    const auto isButton = [](const QQuickItem *item) {
        return item->metaObject()->indexOfSignal("clicked()") >= 0
            || item->metaObject()->indexOfSignal("triggered()") >= 0;
    };
    switch (row.told) {
    case Told::Shown:
        return count([&](const QQuickItem *item) {
            return item->inherits("QQuickText") && item->property("text") == row.text;
        });
    case Told::Button:
        return count([&](const QQuickItem *item) {
            return isButton(item) && item->property("text") == row.text;
        });
    case Told::ToolTip:
        return count([&](const QQuickItem *item) {
            return isButton(item) && item->property("toolTip") == row.text;
        });
    case Told::Name:
        return count([&](const QQuickItem *item) { return accessibleName(item) == row.text; });
    case Told::Zone:
        return accessibleName(window.item(u"dropZone"_s)) == row.text ? 1 : 0;
    case Told::Value:
        return count([&](const QQuickItem *item) {
            return u"%1|%2"_s.arg(
                       item->property("name").toString(), item->property("value").toString())
                == row.text;
        });
    case Told::Title:
        return window.window()->title() == row.text ? 1 : 0;
    }
    return 0;
}

const auto moveFirst
    = u"Move Zorvane to your Mac's Applications folder, quit this copy, and open it again from "
      "Applications before turning on protection."_s;

// The menu bar has the name too.
const Texts header{{Told::Title, u"Zorvane"_s}, {Told::Shown, u"Zorvane"_s, 2},
    {Told::Shown, u"Control which apps can access the network"_s},
    {Told::ToolTip, u"Show getting started"_s}, {Told::Shown, u"Blocked apps"_s}};

const Texts emptyList{{Told::Shown, u"Protection off"_s}, {Told::Shown, u"0"_s},
    {Told::Shown, u"No blocked apps"_s}, {Told::Shown, u"Apps you add will appear here."_s},
    {Told::Shown, u"Drop an app here"_s},
    {Told::Shown, u"Choose an app in Finder to block its new network connections."_s},
    {Told::Zone, u"Drop zone for an application"_s}};

const Texts list{{Told::Shown, u"2"_s}, {Told::Shown, u"1 network process"_s},
    {Told::Shown, u"3 network processes"_s}, {Told::Shown, u"Blocked"_s, 2},
    {Told::ToolTip, u"Remove from list"_s, 2}, {Told::Shown, u"Atlas"_s},
    {Told::Shown, u"Main app"_s}, {Told::Shown, u"Bundled"_s}, {Told::Shown, u"Observed"_s}};

const Texts updatePanel{{Told::Shown, u"Zorvane 1.3 is available"_s},
    {Told::Shown, u"A new version is ready to download."_s}, {Told::Button, u"Download Update"_s},
    {Told::ToolTip, u"Remind me next time"_s}};

const Texts installationPanel{{Told::Shown, u"Move to Applications"_s},
    {Told::Name, u"Explain why protection is unavailable"_s},
    {Told::Shown, u"Finish installing Zorvane"_s},
    {Told::Shown,
        u"macOS can only enable Zorvane's network extension when the app is in the Applications "
        "folder. Quit this copy, drag Zorvane from Downloads into Applications, then open it "
        "there."_s},
    {Told::Button, u"Open Finder Folders"_s}, {Told::Button, u"Quit Zorvane"_s}};

const Texts approvalPanel{{Told::Shown, u"Awaiting approval"_s},
    {Told::Shown, u"Finish enabling protection"_s},
    {Told::Shown, u"macOS is waiting for you to approve Zorvane."_s},
    {Told::Shown, u"1. Open System Settings."_s},
    {Told::Shown, u"2. Scroll to Extensions and choose By Category."_s},
    {Told::Shown, u"3. If Network Extensions is listed, open it and enable Zorvane."_s},
    {Told::Shown, u"4. If it is not listed yet, return here and retry activation."_s},
    {Told::Button, u"Open System Settings"_s}, {Told::Button, u"Retry Activation"_s}};

const Texts protectionSettings{{Told::Shown, u"Protection"_s},
    {Told::Shown, u"Enable network filter"_s},
    {Told::Shown, u"macOS asks for permission before enabling the extension for the first time."_s},
    {Told::Shown, u"Updates"_s}, {Told::Value, u"Current version|1.2 (7)"_s},
    {Told::Shown, u"Current version"_s}, {Told::Button, u"Check for Updates"_s}};

Texts guidePage(
    const QString &title, const QString &message, const QString &forward, int titles = 1)
{
    return {{Told::Shown, title, titles}, {Told::Shown, message}, {Told::Button, u"Skip"_s},
        {Told::ToolTip, u"Close the tutorial"_s}, {Told::Button, u"Back"_s},
        {Told::Button, forward}};
}

void addStatusRows()
{
    QTest::newRow("header") << Make(states::empty) << header;
    QTest::newRow("empty list") << Make(states::empty) << emptyList;
    QTest::newRow("list") << Make(states::listed) << list;
    QTest::newRow("activating") << Make(states::activating)
                                << Texts{{Told::Shown, u"Turning on\u2026"_s}};
    QTest::newRow("enabled") << Make(states::enabled) << Texts{{Told::Shown, u"Protection on"_s}};
    QTest::newRow("failed") << Make(states::failed)
                            << Texts{{Told::Shown, u"Action required"_s},
                                   {Told::Shown,
                                       u"Restart your Mac to finish installing the extension."_s}};
    QTest::newRow("update") << Make(states::updated) << updatePanel;
    QTest::newRow("installation") << Make(states::installationRequired) << installationPanel;
    QTest::newRow("installation, explained") << Make([] {
        auto window = states::installationRequired();
        window->click(window->item(u"protectionSwitch"_s));
        return window;
    }) << Texts{{Told::Shown, moveFirst}, {Told::Shown, u"Zorvane"_s, 3}, {Told::Button, u"OK"_s}};
    QTest::newRow("update with notes")
        << Make([] {
               auto window = std::make_unique<WindowFixture>();
               window->checkForUpdates(u"1.3"_s, u"Fewer helpers are overlooked."_s);
               if (!window->waitUntilGrown(u"updatePanel"_s))
                   qFatal("the panel did not show");
               return window;
           })
        << Texts{{Told::Shown, u"Zorvane 1.3 is available"_s},
               {Told::Shown, u"Fewer helpers are overlooked."_s},
               {Told::Shown, u"A new version is ready to download."_s, 0}};
    QTest::newRow("approval") << Make(states::awaitingApproval) << approvalPanel;
    QTest::newRow("adding")
        << Make(states::adding)
        << Texts{{Told::Shown, u"Adding application"_s}, {Told::Zone, u"Adding application"_s},
               {Told::Shown,
                   u"Discovering helpers and background processes without blocking the interface."_s}};
    QTest::newRow("alert") << Make(states::alerted)
                           << Texts{
                                  {Told::Shown, u"Drop an application with the .app extension."_s},
                                  // In the menu bar, in the header and over the message.
                                  {Told::Shown, u"Zorvane"_s, 3}, {Told::Button, u"OK"_s}};
}

void addWindowRows()
{
    QTest::newRow("menu") << Make(states::menu)
                          << Texts{{Told::Button, u"Check for Updates\u2026"_s}};
    QTest::newRow("settings") << Make(states::settings)
                              << protectionSettings
            + Texts{{Told::Shown, u"You\u2019re up to date. Zorvane 1.2 is the latest version."_s}};
    QTest::newRow("settings with an update") << Make(states::settingsWithUpdate)
                                             << protectionSettings
            + Texts{{Told::Value, u"Available version|1.3"_s},
                {Told::Shown, u"Available version"_s}, {Told::Button, u"Download Update"_s},
                {Told::Shown, u"Zorvane 1.3 is available."_s}};
    QTest::newRow("settings, misplaced")
        << Make([] {
               auto window = states::settingsMisplaced();
               window->click(window->item(u"protectionSwitch"_s));
               return window;
           })
        << Texts{{Told::Name, u"Explain why protection is unavailable"_s}, {Told::Shown, moveFirst},
               {Told::Shown, u"Zorvane"_s}, {Told::Button, u"OK"_s}};
}

void addGuideRows()
{
    const auto page = [](int number) { return Make([=] { return states::guide(number); }); };
    QTest::newRow("guide, first page") << page(0)
                                       << guidePage(u"Welcome to Zorvane"_s,
                                              u"A simple, private way to stop selected apps from "
                                              "accessing the internet. Network decisions happen "
                                              "locally on your Mac."_s,
                                              u"Continue"_s);
    QTest::newRow("guide, second page")
        << page(1)
        << guidePage(u"Move to Applications"_s,
               u"Before turning on protection, drag Zorvane into your Mac's Applications folder "
               "and open it from there. The installer window makes this a single drag."_s,
               u"Continue"_s,
               // The status behind the guide says the same.
               2);
    QTest::newRow("guide, third page")
        << page(2)
        << guidePage(u"Turn On Protection"_s,
               u"Use the switch in the top-right corner. If macOS needs approval, Zorvane will "
               "show the exact steps and a button to open System Settings."_s,
               u"Continue"_s);
    QTest::newRow("guide, fourth page")
        << page(3)
        << guidePage(u"Drop In an App"_s,
               u"Drag any .app from Finder into Zorvane. Its embedded helpers are added "
               "automatically. Expand the app's network-process list to see helpers and "
               "background services as they are detected."_s,
               u"Continue"_s);
    QTest::newRow("guide, last page")
        << page(4)
        << guidePage(u"You're Ready"_s,
               u"Remove an app from the list whenever you want to restore access. Use the "
               "question mark in the header to view this guide again."_s,
               u"Get Started"_s);
}

} // namespace

/** Every text of the windows, to the letter and as often as it is to show. */
class TestStatedTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextIsThere_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<Texts>("texts");
        addStatusRows();
        addWindowRows();
        addGuideRows();
    }

    void everyTextIsThere()
    {
        QFETCH(Make, make);
        QFETCH(Texts, texts);
        const auto window = make();
        QStringList wrong;
        for (const auto &row : texts) {
            if (const auto times = timesTold(*window, row); times != row.times)
                wrong << u"%1 times: %2"_s.arg(times).arg(row.text);
        }
        QVERIFY2(wrong.isEmpty(), qUtf8Printable(wrong.join(u'\n')));
    }
};

QTEST_MAIN(TestStatedTexts)
#include "tst_stated_texts.moc"
