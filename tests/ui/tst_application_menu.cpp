#include "ui/window_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

struct Fixture : WindowFixture {
    explicit Fixture(const QList<SampleApplication> &applications = {})
        : WindowFixture(applications)
    {
        if (!QTest::qWaitForWindowActive(window()))
            qFatal("the main window is not active");
    }

    [[nodiscard]] QQuickItem *menu() const { return item(u"menu"_s); }

    /** The menu's commands from top to bottom. */
    [[nodiscard]] QList<QQuickItem *> commands() const
    {
        return items([](const QQuickItem *item) {
            return item->metaObject()->indexOfSignal("triggered()") >= 0;
        });
    }

    [[nodiscard]] QQuickItem *command(const QString &text) const
    {
        const auto all = commands();
        const auto found = std::find_if(all.cbegin(), all.cend(),
            [&](const QQuickItem *item) { return item->property("text") == text; });
        return found == all.cend() ? nullptr : *found;
    }

    /** What the keyboard is on. */
    [[nodiscard]] QString chosen() const { return accessibleName(window()->activeFocusItem()); }

    void openByMouse() const { click(item(u"menuTitle"_s)); }

    void key(Qt::Key key) const { QTest::keyClick(window(), key); }
};

} // namespace

class TestApplicationMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itStandsAboveTheContent()
    {
        const Fixture fixture;
        const auto *const title = fixture.item(u"menuTitle"_s);
        QCOMPARE(title->parentItem()->height(), 26.0);
        QCOMPARE(title->parentItem()->mapToScene({}).y(), 0.0);
        const auto *const icon = fixture.item(u"ownIcon"_s);
        QCOMPARE(icon->mapToScene({}).y(), 26.0 + 14);
        QCOMPARE(accessibleRole(title->parentItem()), QAccessible::MenuBar);
    }

    void itsCommandsAreInTheirUsualOrder()
    {
        const Fixture fixture;
        fixture.openByMouse();
        QStringList texts;
        for (const auto *const command : fixture.commands()) {
            texts << accessibleName(command);
            QCOMPARE(accessibleRole(command), QAccessible::MenuItem);
        }
        QCOMPARE(texts,
            (QStringList{u"About Zorvane"_s, u"Check for Updates\u2026"_s, u"Settings\u2026"_s,
                u"Quit Zorvane"_s}));
        QCOMPARE(fixture.command(u"Settings\u2026"_s)->property("keys").toString(), u"Ctrl+,"_s);
        QCOMPARE(fixture.command(u"Quit Zorvane"_s)->property("keys").toString(), u"Ctrl+Q"_s);
    }

    void checkForUpdatesMakesACheckThatSaysHowItEnded()
    {
        Fixture fixture;
        // Not due by itself.
        fixture.platform.preferences.values.insert(
            u"updates.lastCheckedAt"_s, fixture.platform.scheduler.now());
        const auto before = fixture.platform.manifestFetcher.requests.size();
        fixture.openByMouse();
        fixture.click(fixture.command(u"Check for Updates\u2026"_s));
        fixture.platform.scheduler.runPosted();
        QCOMPARE(fixture.platform.manifestFetcher.requests.size(), before + 1);
        fixture.settle();
        QVERIFY(fixture.store->updateController()->message().has_value());
        QCOMPARE(fixture.menu(), nullptr);
    }

    void whileACheckRunsItCannotBeChosen()
    {
        Fixture fixture;
        fixture.store->checkForUpdates(true);
        fixture.platform.scheduler.runPosted();
        const auto before = fixture.platform.manifestFetcher.requests.size();
        fixture.openByMouse();
        auto *const command = fixture.command(u"Check for Updates\u2026"_s);
        QVERIFY(!command->isEnabled());
        fixture.click(command);
        doAccessibleAction(command, QAccessibleActionInterface::pressAction());
        QCOMPARE(fixture.platform.manifestFetcher.requests.size(), before);
        QVERIFY2(fixture.menu() != nullptr, "a press on nothing leaves it open");
        fixture.key(Qt::Key_Down);
        fixture.key(Qt::Key_Down);
        QCOMPARE(fixture.chosen(), u"Settings\u2026"_s);
    }

    void settingsOpensTheSettings()
    {
        Fixture fixture;
        fixture.openByMouse();
        fixture.click(fixture.command(u"Settings\u2026"_s));
        QVERIFY(fixture.ui->otherWindows().settings()->isVisible());
    }

    void aboutSaysWhichProgramItIs()
    {
        Fixture fixture;
        fixture.openByMouse();
        fixture.click(fixture.command(u"About Zorvane"_s));
        auto *const about = fixture.ui->otherWindows().about();
        QVERIFY(about->isVisible());
        fixture.turnTo(about);
        QVERIFY(fixture.text(u"Zorvane"_s) != nullptr);
        QVERIFY(fixture.text(u"Version 1.0 (1)"_s) != nullptr);
    }

    void quitEndsTheProgram()
    {
        Fixture fixture;
        fixture.openByMouse();
        fixture.click(fixture.command(u"Quit Zorvane"_s));
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"terminate"_s});
    }

    void keysOfCommandsWorkInEveryWindow()
    {
        Fixture fixture;
        fixture.openSettings();
        QTest::keyClick(fixture.window(), Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"terminate"_s});
    }

    void keysOpenIt_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("F10") << Qt::Key_F10;
        QTest::newRow("Alt") << Qt::Key_Alt;
    }

    void keysOpenIt()
    {
        QFETCH(Qt::Key, key);
        const Fixture fixture;
        fixture.key(key);
        QVERIFY(fixture.menu() != nullptr);
    }

    void altWithAnotherKeyDoesNotOpenIt()
    {
        const Fixture fixture;
        QTest::keyPress(fixture.window(), Qt::Key_Alt);
        QTest::keyClick(fixture.window(), Qt::Key_X, Qt::AltModifier);
        QTest::keyRelease(fixture.window(), Qt::Key_Alt);
        QCOMPARE(fixture.menu(), nullptr);
    }

    void arrowsWalkItsCommandsRoundAndRound()
    {
        const Fixture fixture;
        fixture.key(Qt::Key_F10);
        fixture.key(Qt::Key_Down);
        QCOMPARE(fixture.chosen(), u"About Zorvane"_s);
        fixture.key(Qt::Key_Up);
        QTRY_COMPARE(fixture.chosen(), u"Quit Zorvane"_s);
        fixture.key(Qt::Key_Down);
        QCOMPARE(fixture.chosen(), u"About Zorvane"_s);
        fixture.key(Qt::Key_End);
        QTRY_COMPARE(fixture.chosen(), u"Quit Zorvane"_s);
        fixture.key(Qt::Key_Home);
        QCOMPARE(fixture.chosen(), u"About Zorvane"_s);
    }

    void returnDoesTheChosenCommand()
    {
        const Fixture fixture;
        fixture.key(Qt::Key_F10);
        fixture.key(Qt::Key_Up);
        fixture.key(Qt::Key_Return);
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"terminate"_s});
        QCOMPARE(fixture.menu(), nullptr);
    }

    void escapeClosesItAndTheKeyboardIsWhereItWas()
    {
        const Fixture fixture;
        auto *const help = fixture.button(u"Show getting started"_s);
        help->forceActiveFocus(Qt::TabFocusReason);
        fixture.key(Qt::Key_F10);
        fixture.key(Qt::Key_Down);
        QVERIFY(!help->hasActiveFocus());
        fixture.key(Qt::Key_Escape);
        QTRY_COMPARE(fixture.menu(), nullptr);
        QVERIFY(help->hasActiveFocus());
    }

    void aPressBesideItOnlyClosesIt()
    {
        Fixture fixture;
        fixture.openByMouse();
        fixture.click(fixture.item(u"protectionSwitch"_s));
        QTRY_COMPARE(fixture.menu(), nullptr);
        QVERIFY(fixture.platform.systemExtensions.submitted.isEmpty());
    }

    void aCommandCanBeChosenByPressDragAndRelease()
    {
        Fixture fixture;
        const auto centre = [](const QQuickItem *item) {
            return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
        };
        auto *const window = fixture.window();
        const auto title = centre(fixture.item(u"menuTitle"_s));
        QTest::mousePress(window, Qt::LeftButton, {}, title);
        QVERIFY(fixture.menu() != nullptr);
        const auto quit = centre(fixture.command(u"Quit Zorvane"_s));
        QTest::mouseMove(window, quit);
        QTRY_COMPARE(fixture.chosen(), u"Quit Zorvane"_s);
        QTest::mouseRelease(window, Qt::LeftButton, {}, quit);
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"terminate"_s});
    }

    void thePointerChoosesTheCommandItIsOver()
    {
        const Fixture fixture;
        fixture.openByMouse();
        const auto *const settings = fixture.command(u"Settings\u2026"_s);
        const auto place = settings->mapToScene(QPointF(settings->width() / 2, 12)).toPoint();
        // A pointer that only comes in chooses nothing: the menu may have opened under it.
        QTest::mouseMove(fixture.window(), place - QPoint(1, 0));
        QTest::mouseMove(fixture.window(), place);
        QTRY_COMPARE(fixture.chosen(), u"Settings\u2026"_s);
    }

    void assistiveTechnologyOpensItAndDoesItsCommands()
    {
        const Fixture fixture;
        doAccessibleAction(fixture.item(u"menuTitle"_s), QAccessibleActionInterface::pressAction());
        QCOMPARE(accessibleRole(fixture.menu()), QAccessible::PopupMenu);
        doAccessibleAction(
            fixture.command(u"Quit Zorvane"_s), QAccessibleActionInterface::pressAction());
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"terminate"_s});
    }

    void anAlertThatComesWhileItIsOpenTakesItsPlace()
    {
        Fixture fixture;
        fixture.key(Qt::Key_F10);
        fixture.raiseAlert();
        QTRY_COMPARE(fixture.menu(), nullptr);
        fixture.key(Qt::Key_Escape);
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
    }

    void overAnAlertItGivesTheKeyboardBackToThat()
    {
        Fixture fixture;
        fixture.raiseAlert();
        fixture.key(Qt::Key_F10);
        fixture.key(Qt::Key_Escape);
        QVERIFY(fixture.store->alertMessage().has_value());
        QTRY_COMPARE(fixture.menu(), nullptr);
        fixture.key(Qt::Key_Escape);
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
    }
};

QTEST_MAIN(TestApplicationMenu)
#include "tst_application_menu.moc"
