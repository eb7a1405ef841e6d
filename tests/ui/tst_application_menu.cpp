#include "ui/menu_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

class TestApplicationMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itStandsAboveTheContent()
    {
        const MenuFixture fixture;
        const auto *const title = fixture.item(u"menuTitle"_s);
        QCOMPARE(title->parentItem()->height(), 26.0);
        QCOMPARE(title->parentItem()->mapToScene({}).y(), 0.0);
        const auto *const icon = fixture.item(u"ownIcon"_s);
        QCOMPARE(icon->mapToScene({}).y(), 26.0 + 14);
        QCOMPARE(accessibleRole(title->parentItem()), QAccessible::MenuBar);
    }

    void itsCommandsAreInTheirUsualOrder()
    {
        const MenuFixture fixture;
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
        MenuFixture fixture;
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
        MenuFixture fixture;
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
        MenuFixture fixture;
        fixture.openByMouse();
        fixture.click(fixture.command(u"Settings\u2026"_s));
        QVERIFY(fixture.ui->otherWindows().settings()->isVisible());
    }

    void aboutSaysWhichProgramItIs()
    {
        MenuFixture fixture;
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
        MenuFixture fixture;
        fixture.openByMouse();
        fixture.click(fixture.command(u"Quit Zorvane"_s));
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"terminate"_s});
    }

    void keysOfCommandsWorkInEveryWindow()
    {
        MenuFixture fixture;
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
        const MenuFixture fixture;
        fixture.key(key);
        QVERIFY(fixture.menu() != nullptr);
    }

    void altWithAnotherKeyDoesNotOpenIt()
    {
        const MenuFixture fixture;
        QTest::keyPress(fixture.window(), Qt::Key_Alt);
        QTest::keyClick(fixture.window(), Qt::Key_X, Qt::AltModifier);
        QTest::keyRelease(fixture.window(), Qt::Key_Alt);
        QCOMPARE(fixture.menu(), nullptr);
    }

    void arrowsWalkItsCommandsRoundAndRound()
    {
        const MenuFixture fixture;
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
        const MenuFixture fixture;
        fixture.key(Qt::Key_F10);
        fixture.key(Qt::Key_Up);
        fixture.key(Qt::Key_Return);
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"terminate"_s});
        QCOMPARE(fixture.menu(), nullptr);
    }

    void escapeClosesItAndTheKeyboardIsWhereItWas()
    {
        const MenuFixture fixture;
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
        MenuFixture fixture;
        fixture.openByMouse();
        fixture.click(fixture.item(u"protectionSwitch"_s));
        QTRY_COMPARE(fixture.menu(), nullptr);
        QVERIFY(fixture.platform.systemExtensions.submitted.isEmpty());
    }

    void aCommandCanBeChosenByPressDragAndRelease()
    {
        MenuFixture fixture;
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
        const MenuFixture fixture;
        fixture.openByMouse();
        const auto *const settings = fixture.command(u"Settings\u2026"_s);
        const auto place = settings->mapToScene(QPointF(settings->width() / 2, 12)).toPoint();
        // A pointer that only comes in chooses nothing: the menu may have opened under it.
        QTest::mouseMove(fixture.window(), place - QPoint(1, 0));
        QTest::mouseMove(fixture.window(), place);
        QTRY_COMPARE(fixture.chosen(), u"Settings\u2026"_s);
    }

    void anAlertThatComesWhileItIsOpenTakesItsPlace()
    {
        MenuFixture fixture;
        fixture.key(Qt::Key_F10);
        fixture.raiseAlert();
        QTRY_COMPARE(fixture.menu(), nullptr);
        fixture.key(Qt::Key_Escape);
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
    }

    void overAnAlertItGivesTheKeyboardBackToThat()
    {
        MenuFixture fixture;
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
