#include "ui/menu_fixture.h"

#include <QTest>

using namespace zorvane::tests;

/** The application's menu as assistive technology uses it: by actions, without key or pointer. */
class TestMenuByAction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itOpensAndItsCommandsAreDone()
    {
        const MenuFixture fixture;
        doAccessibleAction(fixture.item(u"menuTitle"_s), QAccessibleActionInterface::pressAction());
        QCOMPARE(accessibleRole(fixture.menu()), QAccessible::PopupMenu);
        doAccessibleAction(
            fixture.command(u"Quit Zorvane"_s), QAccessibleActionInterface::pressAction());
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"terminate"_s});
    }

    void aCommandClosesItAndTheKeyboardIsWhereItWas()
    {
        MenuFixture fixture;
        auto *const help = fixture.button(u"Show getting started"_s);
        help->forceActiveFocus(Qt::TabFocusReason);
        fixture.key(Qt::Key_F10);
        QVERIFY(!help->hasActiveFocus());
        doAccessibleAction(fixture.command(u"Check for Updates\u2026"_s),
            QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(fixture.menu(), nullptr);
        QVERIFY(help->hasActiveFocus());
        fixture.platform.scheduler.runPosted();
        QVERIFY(fixture.store->updateController()->isChecking());
    }

    void itsTitlePressedTwiceLeavesTheKeyboardWhereItWas()
    {
        const MenuFixture fixture;
        auto *const help = fixture.button(u"Show getting started"_s);
        help->forceActiveFocus(Qt::TabFocusReason);
        auto *const title = fixture.item(u"menuTitle"_s);
        doAccessibleAction(title, QAccessibleActionInterface::pressAction());
        QVERIFY(fixture.menu() != nullptr);
        QVERIFY(!help->hasActiveFocus());
        doAccessibleAction(title, QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(fixture.menu(), nullptr);
        QVERIFY(help->hasActiveFocus());
    }
};

QTEST_MAIN(TestMenuByAction)
#include "tst_menu_by_action.moc"
