#include "ui/measures.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

/** The settings of a program in this state. */
struct Settings : WindowFixture {
    using Enter = std::function<void(WindowFixture &)>;

    explicit Settings(const Enter &enter = [](auto &) {})
    {
        enter(*this);
        openSettings();
    }

    [[nodiscard]] QQuickItem *toggle() const { return item(u"protectionSwitch"_s); }
    [[nodiscard]] QQuickWindow *main() const { return ui->window(); }

    /** What the line of this name says. */
    [[nodiscard]] QString value(const QString &name) const
    {
        const auto *const line = item(name);
        return line == nullptr ? QString() : line->property("value").toString();
    }
};

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSwitchTurnsProtectionOnAndOffInBothWindows()
    {
        Settings settings;
        settings.click(settings.toggle());
        settings.settle();
        QVERIFY(!settings.toggle()->property("checked").toBool());
        settings.platform.systemExtensions.delegate()->requestDidFinish(
            zorvane::platform::ActivationResult::Completed);
        settings.settle();
        QVERIFY(settings.toggle()->property("checked").toBool());
        settings.turnTo(settings.main());
        QVERIFY(settings.toggle()->property("checked").toBool());
        settings.click(settings.toggle());
        settings.settle();
        QVERIFY(!settings.toggle()->property("checked").toBool());
        settings.turnTo(settings.ui->otherWindows().settings());
        QVERIFY(!settings.toggle()->property("checked").toBool());
    }

    void theSwitchCanBeUsedAsInTheMainWindow_data()
    {
        QTest::addColumn<Settings::Enter>("enter");
        QTest::addColumn<bool>("usable");
        QTest::newRow("inactive") << Settings::Enter([](auto &) {}) << true;
        QTest::newRow("installation required")
            << Settings::Enter([](auto &fixture) { fixture.requireInstallation(); }) << false;
        QTest::newRow("activating")
            << Settings::Enter([](auto &fixture) { fixture.activate(); }) << false;
        QTest::newRow("awaiting approval")
            << Settings::Enter([](auto &fixture) { fixture.awaitApproval(); }) << false;
        QTest::newRow("enabled") << Settings::Enter([](auto &fixture) { fixture.enable(); })
                                 << true;
        QTest::newRow("failed") << Settings::Enter([](auto &fixture) { fixture.fail(u"It."_s); })
                                << true;
    }

    void theSwitchCanBeUsedAsInTheMainWindow()
    {
        QFETCH(Settings::Enter, enter);
        Settings settings(enter);
        QTEST(settings.toggle()->isEnabled(), "usable");
        settings.turnTo(settings.main());
        QTEST(settings.toggle()->isEnabled(), "usable");
    }

    void aTapOnTheSwitchOfAMisplacedProgramExplainsInAnAlert()
    {
        Settings settings([](auto &fixture) { fixture.requireInstallation(); });
        QVERIFY(!settings.toggle()->property("checked").toBool());
        settings.click(settings.toggle());
        QVERIFY(settings.store->alertMessage().has_value());
        QCOMPARE(accessibleName(settings.item(u"alertBox"_s)), u"Zorvane"_s);
        QVERIFY(settings.text(*settings.store->alertMessage()) != nullptr);
    }

    void aTapOnTheSwitchWhileActivatingDoesNothing()
    {
        Settings settings([](auto &fixture) { fixture.activate(); });
        QCOMPARE(settings.item(u"explanationLayer"_s), nullptr);
        const auto loads = settings.platform.filterManager.loads;
        const auto submitted = settings.platform.systemExtensions.submitted.size();
        const auto lines = settings.platform.log.lines;
        settings.platform.preferences.written.clear();
        settings.click(settings.toggle());
        settings.settle();
        QCOMPARE(settings.store->alertMessage(), std::nullopt);
        QCOMPARE(settings.platform.filterManager.loads, loads);
        QCOMPARE(settings.platform.systemExtensions.submitted.size(), submitted);
        // A second request would be told in the log, and nowhere else.
        QCOMPARE(settings.platform.log.lines, lines);
        QVERIFY(settings.platform.preferences.written.isEmpty());
    }

    void oneDismissalClosesTheAlertOfBothWindows_data()
    {
        QTest::addColumn<bool>("inSettings");
        QTest::newRow("in the settings") << true;
        QTest::newRow("in the main window") << false;
    }

    void oneDismissalClosesTheAlertOfBothWindows()
    {
        QFETCH(bool, inSettings);
        Settings settings;
        settings.raiseAlert();
        auto *const dismissing = inSettings ? settings.window() : settings.main();
        auto *const other = inSettings ? settings.main() : settings.window();
        for (auto *const window : {other, dismissing}) {
            settings.turnTo(window);
            QTRY_VERIFY(settings.item(u"alertBox"_s) != nullptr);
            QTRY_COMPARE(settings.item(u"alertBox"_s)->opacity(), 1.0);
        }
        settings.click(settings.button(u"OK"_s));
        QCOMPARE(settings.store->alertMessage(), std::nullopt);
        QTRY_COMPARE(settings.item(u"alertBox"_s), nullptr);
        settings.turnTo(other);
        QTRY_COMPARE(settings.item(u"alertBox"_s), nullptr);
    }

    void behindTheAlertNothingCanBeUsed()
    {
        Settings settings;
        settings.raiseAlert();
        settings.click(settings.toggle());
        QVERIFY(QMetaObject::invokeMethod(settings.toggle(), "press"));
        settings.settle();
        QVERIFY(settings.platform.systemExtensions.submitted.isEmpty());
    }

    void theCurrentVersionIsThatOfTheBundle_data()
    {
        using Version = std::optional<QString>;
        QTest::addColumn<Version>("version");
        QTest::addColumn<Version>("build");
        QTest::addColumn<QString>("text");
        QTest::newRow("both") << Version(u"1.2"_s) << Version(u"7"_s) << u"1.2 (7)"_s;
        QTest::newRow("no build") << Version(u"1.2"_s) << Version() << u"1.2"_s;
        QTest::newRow("no version") << Version() << Version(u"7"_s) << u"Unknown (7)"_s;
        QTest::newRow("neither") << Version() << Version() << u"Unknown"_s;
    }

    void theCurrentVersionIsThatOfTheBundle()
    {
        QFETCH(std::optional<QString>, version);
        QFETCH(std::optional<QString>, build);
        const Settings settings([&](auto &fixture) {
            fixture.platform.mainBundle.version = version;
            fixture.platform.mainBundle.build = build;
        });
        QTEST(settings.value(u"currentVersion"_s), "text");
    }

    void withoutANewerReleaseOnlyTheCheckIsOffered()
    {
        const Settings settings;
        QCOMPARE(settings.item(u"availableVersion"_s), nullptr);
        QCOMPARE(settings.button(u"Download Update"_s), nullptr);
        QVERIFY(settings.button(u"Check for Updates"_s) != nullptr);
    }

    void aNewerReleaseIsNamedAndCanBeDownloaded()
    {
        Settings settings([](auto &fixture) { fixture.checkForUpdates(u"1.3"_s); });
        QVERIFY(settings.waitUntilGrown(u"availableUpdate"_s));
        QCOMPARE(settings.value(u"availableVersion"_s), u"1.3"_s);
        settings.click(settings.button(u"Download Update"_s));
        QCOMPARE(settings.platform.actions.calls, QStringList{u"url https://kestrelworks.dev/d"_s});
    }

    void aReleaseThatIsTakenBackIsNamedUntilItsLineIsGone()
    {
        Settings settings([](auto &fixture) { fixture.checkForUpdates(u"1.3"_s); });
        QVERIFY(settings.waitUntilGrown(u"availableUpdate"_s));
        settings.checkForUpdates(u"0.1"_s);
        QCOMPARE(settings.value(u"availableVersion"_s), u"1.3"_s);
        QTRY_COMPARE(settings.item(u"availableVersion"_s), nullptr);
    }

    void theCheckIsMadeAtOnceAndTellsHowItEnded()
    {
        Settings settings;
        // Not due by itself.
        settings.platform.preferences.values.insert(
            u"updates.lastCheckedAt"_s, settings.platform.scheduler.now());
        const auto before = settings.platform.manifestFetcher.requests.size();
        settings.publish(u"0.1"_s);
        settings.click(settings.button(u"Check for Updates"_s));
        QCOMPARE(settings.platform.manifestFetcher.requests.size(), before + 1);
        settings.settle();
        const auto message = settings.store->updateController()->messageForViews();
        QVERIFY(!message.isEmpty());
        QCOMPARE(settings.item(u"updateMessage"_s)->property("text").toString(), message);
    }

    void whatTheCheckFindsShowsInBothWindows()
    {
        Settings settings;
        settings.publish(u"1.3"_s);
        settings.click(settings.button(u"Check for Updates"_s));
        settings.settle();
        QVERIFY(settings.waitUntilGrown(u"availableUpdate"_s));
        settings.turnTo(settings.main());
        QVERIFY(settings.waitUntilGrown(u"updatePanel"_s));
        QVERIFY(settings.text(u"Zorvane 1.3 is available"_s) != nullptr);
    }

    void whileACheckRunsNoOtherCanBeStarted()
    {
        Settings settings;
        auto *const check = settings.button(u"Check for Updates"_s);
        check->forceActiveFocus(Qt::TabFocusReason);
        const auto before = settings.platform.manifestFetcher.requests.size();
        QTest::keyClick(settings.window(), Qt::Key_Space);
        QVERIFY(!check->isEnabled());
        settings.click(check);
        doAccessibleAction(check, QAccessibleActionInterface::pressAction());
        QCOMPARE(settings.platform.manifestFetcher.requests.size(), before + 1);
        settings.settle();
        QVERIFY(check->isEnabled());
        QVERIFY2(check->hasActiveFocus(), "the keyboard stays where it was");
    }

    void tabGoesThroughItAsOneReads()
    {
        Settings settings([](auto &fixture) { fixture.checkForUpdates(u"1.3"_s); });
        QVERIFY(settings.waitUntilGrown(u"availableUpdate"_s));
        QStringList visited;
        for (int times = 0; times < 4; ++times) {
            QTest::keyClick(settings.window(), Qt::Key_Tab);
            visited << accessibleName(settings.window()->activeFocusItem());
        }
        QCOMPARE(visited,
            (QStringList{u"Enable network filter"_s, u"Download Update"_s, u"Check for Updates"_s,
                u"Enable network filter"_s}));
    }

    void theSwitchAndTheValuesAreNamedForAssistiveTechnology()
    {
        const Settings settings;
        QCOMPARE(accessibleName(settings.toggle()), u"Enable network filter"_s);
        QCOMPARE(accessibleRole(settings.toggle()), QAccessible::CheckBox);
        const auto *const version = settings.item(u"currentVersion"_s);
        QCOMPARE(accessibleName(version), u"Current version"_s);
        QCOMPARE(QAccessible::queryAccessibleInterface(const_cast<QQuickItem *>(version))
                     ->text(QAccessible::Description),
            u"1.0 (1)"_s);
    }

    void aLongVersionIsElidedAndAMessageOfAnyLengthStaysInTheWindow()
    {
        Settings settings(
            [](auto &fixture) { fixture.checkForUpdates(u"9."_s + QString(3000, u'1')); });
        QVERIFY(settings.waitUntilGrown(u"availableUpdate"_s));
        const auto *const message = settings.item(u"updateMessage"_s);
        QVERIFY(!message->property("truncated").toBool());
        QVERIFY(message->property("text").toString().endsWith(u"1 is available."_s));
        QCOMPARE(accessibleName(message), settings.store->updateController()->messageForViews());
        QVERIFY(inWindow(message).bottom() < 520 - 20);
        const auto line = named(u"availableVersion"_s);
        const auto *const value = partOf(line, u"value"_s)(settings);
        QVERIFY(value->property("truncated").toBool());
        QCOMPARE(inWindow(value).right(), 460.0 - 20 - 14);
        QCOMPARE(partOf(partOf(line, u"value"_s), u"wholeText"_s)(settings)
                     ->property("toolTip")
                     .toString(),
            u"9."_s + QString(3000, u'1'));
    }
};

QTEST_MAIN(TestSettings)
#include "tst_settings.moc"
