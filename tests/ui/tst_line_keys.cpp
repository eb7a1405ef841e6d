#include "ui/observed.h"
#include "ui/window_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

/** Three applications; the second runs as itself and 39 helpers, and is unfolded. */
struct Fixture : WindowFixture {
    Fixture()
        : WindowFixture({{u"Alpha"_s, u"org.example.alpha"_s, std::nullopt, std::nullopt},
            {u"Beta"_s, u"org.example.beta"_s, std::nullopt, std::nullopt},
            {u"Gamma"_s, u"org.example.gamma"_s, std::nullopt, std::nullopt}})
    {
        observeHelpers(39);
        click(disclosure());
        const auto isUnfolded = [&] {
            const auto *const lines = item(u"componentLines"_s);
            return lines != nullptr && lines->property("unfolding").toReal() >= 1;
        };
        if (!QTest::qWaitForWindowActive(window()) || !QTest::qWaitFor(isUnfolded))
            qFatal("the second row did not unfold");
        settle();
        while (here() != u"Alpha")
            key(Qt::Key_Tab);
    }

    void observeHelpers(int count)
    {
        QList<zorvane::inspection::DiscoveredNetworkProcess> processes;
        for (int number = 0; number < count; ++number)
            processes << observedProcess(
                platform, u"Beta"_s, u"Helper %1"_s.arg(number, 2, 10, QChar(u'0')), std::nullopt);
        observe(platform, processes);
    }

    [[nodiscard]] QQuickItem *disclosure() const
    {
        return items([](const QQuickItem *item) {
            return item->objectName() == u"disclosure";
        }).value(1);
    }

    void key(Qt::Key key, int times = 1) const
    {
        for (int time = 0; time < times; ++time)
            QTest::keyClick(window(), key);
    }

    /** What the keyboard is on. */
    [[nodiscard]] QString here() const { return accessibleName(window()->activeFocusItem()); }

    [[nodiscard]] bool isInView() const
    {
        const auto place = inWindow(window()->activeFocusItem());
        return place.top() >= menuBarHeight + 74 && place.bottom() <= window()->height();
    }
};

/** How many lines of this name assistive technology finds from here. */
int countTold(const QAccessibleInterface *told, const QString &name)
{
    const bool isLine = told->role() == QAccessible::ListItem;
    int count = isLine && told->text(QAccessible::Name) == name ? 1 : 0;
    for (int at = 0; at < told->childCount(); ++at)
        count += countTold(told->child(at), name);
    return count;
}

} // namespace

class TestLineKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arrowsGoThroughTheLinesOfAnUnfoldedRow()
    {
        const Fixture fixture;
        fixture.key(Qt::Key_Down);
        QCOMPARE(fixture.here(), u"Beta"_s);
        fixture.key(Qt::Key_Down);
        QCOMPARE(fixture.here(), u"Beta"_s);
        QCOMPARE(accessibleRole(fixture.window()->activeFocusItem()), QAccessible::ListItem);
        fixture.key(Qt::Key_Down);
        QCOMPARE(fixture.here(), u"Helper 00"_s);
        fixture.key(Qt::Key_Down, 39);
        QCOMPARE(fixture.here(), u"Gamma"_s);
        fixture.key(Qt::Key_Up);
        QCOMPARE(fixture.here(), u"Helper 38"_s);
        fixture.key(Qt::Key_Up, 40);
        QCOMPARE(fixture.here(), u"Beta"_s);
        fixture.key(Qt::Key_Up);
        QCOMPARE(fixture.here(), u"Alpha"_s);
    }

    void everyLineThatTheKeyboardReachesIsInView()
    {
        const Fixture fixture;
        int lines = 0;
        for (const auto key : {Qt::Key_Down, Qt::Key_Up}) {
            fixture.key(Qt::Key_Down);
            for (int line = 0; line < 39; ++line) {
                fixture.key(key);
                if (fixture.window()->activeFocusItem()->height() > 32)
                    continue;
                QVERIFY(fixture.isInView());
                ++lines;
            }
        }
        QCOMPARE(lines, 39 + 39);
    }

    void aLineTellsItsKind()
    {
        const Fixture fixture;
        fixture.key(Qt::Key_Down, 3);
        auto *const told
            = QAccessible::queryAccessibleInterface(fixture.window()->activeFocusItem());
        QCOMPARE(told->text(QAccessible::Description), u"Observed"_s);
    }

    void ofALineThatGoesTheKeyboardReturnsToTheRow()
    {
        Fixture fixture;
        fixture.key(Qt::Key_Down, 41);
        QCOMPARE(fixture.here(), u"Helper 38"_s);
        fixture.observeHelpers(2);
        QCOMPARE(fixture.here(), u"Beta"_s);
        QVERIFY(fixture.window()->activeFocusItem()->height() > 56);
    }

    void ofARowThatIsFoldedTheKeyboardReturnsToTheRow()
    {
        const Fixture fixture;
        fixture.key(Qt::Key_Down, 3);
        QCOMPARE(fixture.here(), u"Helper 00"_s);
        fixture.click(fixture.disclosure());
        QCOMPARE(fixture.here(), u"Beta"_s);
    }

    void deleteOnALineRemovesItsApplication()
    {
        const Fixture fixture;
        fixture.key(Qt::Key_Down, 3);
        fixture.key(Qt::Key_Delete);
        QCOMPARE(fixture.store->applications().size(), 2);
        QCOMPARE(fixture.here(), u"Gamma"_s);
    }

    void tabGoesOnFromALineToTheButtonsOfItsRow()
    {
        const Fixture fixture;
        fixture.key(Qt::Key_Down, 3);
        fixture.key(Qt::Key_Tab);
        QCOMPARE(fixture.here(), u"40 network processes"_s);
    }

    void downOnTheLastLineOfTheLastRowStaysThere()
    {
        const Fixture fixture;
        fixture.store->remove(fixture.store->applications().last());
        fixture.key(Qt::Key_Down, 41);
        QCOMPARE(fixture.here(), u"Helper 38"_s);
        fixture.key(Qt::Key_Down);
        QCOMPARE(fixture.here(), u"Helper 38"_s);
        QVERIFY(fixture.isInView());
    }

    void pageKeysGoThroughTheLinesOfALongRow()
    {
        const Fixture fixture;
        // Four fifths of 650 are 16 lines of 32 and a little; the first is 118 beneath the list's
        // top.
        for (const auto &reached : {u"Helper 11"_s, u"Helper 27"_s, u"Gamma"_s, u"Gamma"_s}) {
            fixture.key(Qt::Key_PageDown);
            QCOMPARE(fixture.here(), reached);
            QVERIFY(fixture.isInView());
        }
        for (const auto &reached : {u"Helper 22"_s, u"Helper 05"_s, u"Alpha"_s, u"Alpha"_s}) {
            fixture.key(Qt::Key_PageUp);
            QCOMPARE(fixture.here(), reached);
            QVERIFY(fixture.isInView());
        }
    }

    void aLineIsToldOnceWhereverTheKeyboardIs()
    {
        const Fixture fixture;
        const auto timesTold = [&] {
            return countTold(
                QAccessible::queryAccessibleInterface(fixture.window()), u"Helper 00"_s);
        };
        QCOMPARE(timesTold(), 1);
        fixture.key(Qt::Key_Down, 3);
        QCOMPARE(fixture.here(), u"Helper 00"_s);
        QCOMPARE(timesTold(), 1);
        fixture.key(Qt::Key_Home);
        QCOMPARE(fixture.here(), u"Alpha"_s);
        QCOMPARE(timesTold(), 1);
    }
};

QTEST_MAIN(TestLineKeys)
#include "tst_line_keys.moc"
