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
        if (!QTest::qWaitForWindowActive(window())
            || !QTest::qWaitFor([&] { return item(u"componentLines"_s) != nullptr; }))
            qFatal("the second row did not unfold");
        // Longer than the unfolding takes.
        QTest::qWait(400);
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
        const auto *const focused = window()->activeFocusItem();
        const auto place = focused->mapRectToScene(QRectF(QPointF(), focused->size()));
        return place.top() >= menuBarHeight + 74 && place.bottom() <= window()->height();
    }
};

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
};

QTEST_MAIN(TestLineKeys)
#include "tst_line_keys.moc"
