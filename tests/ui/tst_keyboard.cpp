#include "ui/window_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

QList<SampleApplication> numbered(int count)
{
    QList<SampleApplication> result;
    for (int number = 0; number < count; ++number)
        result.append({u"App %1"_s.arg(number, 2, 10, QChar(u'0')),
            u"org.example.app%1"_s.arg(number), std::nullopt, std::nullopt});
    return result;
}

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

} // namespace

class TestKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tabGoesThroughTheWindowAsOneReads()
    {
        WindowFixture fixture(numbered(2));
        fixture.awaitApproval();
        QVERIFY(fixture.waitUntilGrown(u"approvalPanel"_s));
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        QStringList visited;
        for (int times = 0; times < 9; ++times) {
            QTest::keyClick(fixture.window(), Qt::Key_Tab);
            const auto *const item = fixture.window()->activeFocusItem();
            visited << accessibleName(item);
        }
        QCOMPARE(visited.mid(0, 3),
            (QStringList{
                u"Show getting started"_s, u"Open System Settings"_s, u"Retry Activation"_s}));
        QCOMPARE(visited.count(u"Remove from list"_s), 2);
    }

    void arrowsGoFromRowToRow()
    {
        WindowFixture fixture(numbered(3));
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        while (focusedRow(fixture).isEmpty())
            QTest::keyClick(fixture.window(), Qt::Key_Tab);
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
        WindowFixture fixture(numbered(40));
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        while (focusedRow(fixture).isEmpty())
            QTest::keyClick(fixture.window(), Qt::Key_Tab);
        for (int times = 0; times < 39; ++times)
            QTest::keyClick(fixture.window(), Qt::Key_Down);
        QCOMPARE(focusedRow(fixture), u"App 39"_s);
        const auto *const item = fixture.window()->activeFocusItem();
        const auto place = item->mapRectToScene(QRectF(QPointF(), item->size()));
        QVERIFY(place.bottom() <= fixture.window()->height());
        QVERIFY(place.top() >= 74);
    }

    void deleteRemovesTheFocusedRowAndTheNextOneTakesTheFocus()
    {
        WindowFixture fixture(numbered(3));
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        while (focusedRow(fixture).isEmpty())
            QTest::keyClick(fixture.window(), Qt::Key_Tab);
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
};

QTEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
