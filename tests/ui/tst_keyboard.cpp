#include "ui/samples.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

/** The name of the row that has the focus, in it or in one of its parts; empty if none has. */
QString focusedRow(const WindowFixture &fixture)
{
    for (auto *item = fixture.window()->activeFocusItem(); item != nullptr;
         item = item->parentItem()) {
        if (item->property("identifiers").isValid())
            return item->property("name").toString();
    }
    return {};
}

void focusFirstRow(const WindowFixture &fixture)
{
    QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
    while (focusedRow(fixture).isEmpty())
        QTest::keyClick(fixture.window(), Qt::Key_Tab);
}

/** Between the header and the lower edge of the window. */
bool isInView(const WindowFixture &fixture, const QQuickItem *item)
{
    const auto place = inWindow(item);
    const auto headerTop = WindowFixture::menuBarHeight;
    const auto headerBottom = headerTop + 74;
    return place.bottom() <= fixture.window()->height() && place.top() >= headerTop
        && (place.top() >= headerBottom || place.bottom() <= headerBottom);
}

} // namespace

class TestKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tabGoesThroughTheWindowAsOneReads()
    {
        WindowFixture fixture(manySamples(2));
        fixture.awaitApproval();
        QVERIFY(fixture.waitUntilGrown(u"approvalPanel"_s));
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        QStringList visited;
        for (int times = 0; times < 9; ++times) {
            QTest::keyClick(fixture.window(), Qt::Key_Tab);
            const auto *const item = fixture.window()->activeFocusItem();
            visited << accessibleName(item);
        }
        QCOMPARE(visited,
            (QStringList{u"Show getting started"_s, u"Open System Settings"_s,
                u"Retry Activation"_s, u"App 00"_s, u"1 network process"_s, u"Remove from list"_s,
                u"App 01"_s, u"1 network process"_s, u"Remove from list"_s}));
    }

    void tabReachesEveryRowOfALongListAndItsButtons()
    {
        WindowFixture fixture(manySamples(40));
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            QSet<QString> rows;
            QSet<QString> removable;
            // The header has two stops, each row three.
            for (int times = 0; times < 2 + 3 * 40; ++times) {
                QTest::keyClick(fixture.window(), key);
                const auto *const item = fixture.window()->activeFocusItem();
                if (accessibleRole(item) == QAccessible::ListItem)
                    rows.insert(accessibleName(item));
                else if (accessibleName(item) == u"Remove from list")
                    removable.insert(focusedRow(fixture));
                QVERIFY(isInView(fixture, item));
            }
            QCOMPARE(rows.size(), 40);
            QCOMPARE(removable.size(), 40);
        }
    }

    void arrowsGoFromRowToRow()
    {
        WindowFixture fixture(manySamples(3));
        focusFirstRow(fixture);
        QCOMPARE(focusedRow(fixture), u"App 00"_s);
        QTest::keyClick(fixture.window(), Qt::Key_Down);
        QCOMPARE(focusedRow(fixture), u"App 01"_s);
        QTest::keyClick(fixture.window(), Qt::Key_Down);
        QTest::keyClick(fixture.window(), Qt::Key_Down);
        QCOMPARE(focusedRow(fixture), u"App 02"_s);
        QTest::keyClick(fixture.window(), Qt::Key_Up);
        QCOMPARE(focusedRow(fixture), u"App 01"_s);
    }

    void arrowsScrollToTheRow()
    {
        WindowFixture fixture(manySamples(40));
        focusFirstRow(fixture);
        for (int times = 0; times < 39; ++times)
            QTest::keyClick(fixture.window(), Qt::Key_Down);
        QCOMPARE(focusedRow(fixture), u"App 39"_s);
        QVERIFY(isInView(fixture, fixture.window()->activeFocusItem()));
    }

    void homeAndEndGoToTheFirstRowAndTheLast()
    {
        WindowFixture fixture(manySamples(40));
        focusFirstRow(fixture);
        QTest::keyClick(fixture.window(), Qt::Key_End);
        QCOMPARE(focusedRow(fixture), u"App 39"_s);
        QVERIFY(isInView(fixture, fixture.window()->activeFocusItem()));
        QTest::keyClick(fixture.window(), Qt::Key_End);
        QCOMPARE(focusedRow(fixture), u"App 39"_s);
        QTest::keyClick(fixture.window(), Qt::Key_Home);
        QCOMPARE(focusedRow(fixture), u"App 00"_s);
        QVERIFY(isInView(fixture, fixture.window()->activeFocusItem()));
    }

    void pageKeysGoOnByMostOfAWindow()
    {
        WindowFixture fixture(manySamples(40));
        focusFirstRow(fixture);
        QTest::keyClick(fixture.window(), Qt::Key_PageDown);
        // Four fifths of 650 are nine rows of 57.
        QCOMPARE(focusedRow(fixture), u"App 09"_s);
        QTest::keyClick(fixture.window(), Qt::Key_PageDown);
        QCOMPARE(focusedRow(fixture), u"App 18"_s);
        QTest::keyClick(fixture.window(), Qt::Key_PageUp);
        QCOMPARE(focusedRow(fixture), u"App 08"_s);
        for (int times = 0; times < 5; ++times)
            QTest::keyClick(fixture.window(), Qt::Key_PageDown);
        QCOMPARE(focusedRow(fixture), u"App 39"_s);
        for (int times = 0; times < 6; ++times)
            QTest::keyClick(fixture.window(), Qt::Key_PageUp);
        QCOMPARE(focusedRow(fixture), u"App 00"_s);
    }

    void deleteRemovesTheFocusedRowAndTheNextOneTakesTheFocus()
    {
        WindowFixture fixture(manySamples(3));
        focusFirstRow(fixture);
        QTest::keyClick(fixture.window(), Qt::Key_Down);
        QTest::keyClick(fixture.window(), Qt::Key_Delete);
        QCOMPARE(fixture.store->applications().size(), 2);
        QCOMPARE(focusedRow(fixture), u"App 02"_s);
        QTest::keyClick(fixture.window(), Qt::Key_Backspace);
        QCOMPARE(fixture.store->applications().size(), 1);
        QCOMPARE(focusedRow(fixture), u"App 00"_s);
    }

    void aClickTakesNoFocusAndShowsNoRing()
    {
        WindowFixture fixture;
        auto *const toggle = fixture.item(u"protectionSwitch"_s);
        fixture.click(toggle);
        QVERIFY(!toggle->hasActiveFocus());
    }

    void spaceAndReturnPressAButton_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Space") << Qt::Key_Space;
        QTest::newRow("Return") << Qt::Key_Return;
    }

    void spaceAndReturnPressAButton()
    {
        QFETCH(Qt::Key, key);
        WindowFixture fixture;
        fixture.requireInstallation();
        QTRY_VERIFY(fixture.button(u"Quit Zorvane"_s) != nullptr);
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        fixture.button(u"Quit Zorvane"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(fixture.window(), key);
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"terminate"_s});
    }

    void backtabFromARowOutOfSightGoesToTheButtonsOfTheRowBeforeIt()
    {
        WindowFixture fixture(manySamples(40));
        focusFirstRow(fixture);
        for (int times = 0; times < 20; ++times)
            QTest::keyClick(fixture.window(), Qt::Key_Down);
        QCOMPARE(focusedRow(fixture), u"App 20"_s);
        fixture.item(u"page"_s)->setProperty("contentY", 0);
        fixture.settle();
        QVERIFY(fixture.text(u"App 18"_s) == nullptr);
        QTest::keyClick(fixture.window(), Qt::Key_Backtab);
        QCOMPARE(accessibleName(fixture.window()->activeFocusItem()), u"Remove from list"_s);
        QCOMPARE(focusedRow(fixture), u"App 19"_s);
        QVERIFY(isInView(fixture, fixture.window()->activeFocusItem()));
    }
};

QTEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
