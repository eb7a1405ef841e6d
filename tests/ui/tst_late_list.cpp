#include "ui/samples.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;

namespace
{

/** A window that is there before the saved list has been read. */
struct EarlyWindow : WindowFixture {
    explicit EarlyWindow(const QList<SampleApplication> &applications)
        : WindowFixture(applications, false, {}, ListRead::WhenTold)
    {
        // The status stays as it is when the filter hears of the list.
        platform.preferences.values.insert(u"protectionRequested"_s, false);
    }

    void showPanels()
    {
        checkForUpdates(u"1.3"_s);
        requireInstallation();
        QVERIFY(waitUntilGrown(u"updatePanel"_s));
        QVERIFY(waitUntilGrown(u"installationPanel"_s));
    }
};

bool isTransparent(const QQuickItem *item)
{
    return item != nullptr && (item->opacity() == 0 || isTransparent(item->parentItem()));
}

struct Drawn {
    QString name;
    QRectF place;
};

/** All that is painted, and where. */
QHash<const QQuickItem *, Drawn> drawn(const WindowFixture &window)
{
    const auto painted = window.items([](const QQuickItem *item) {
        return item->flags().testFlag(QQuickItem::ItemHasContents) && !isTransparent(item);
    });
    QHash<const QQuickItem *, Drawn> result;
    for (const auto *const item : painted)
        result.insert(
            item, {item->objectName() + item->property("text").toString(), inWindow(item)});
    return result;
}

QStringList names(const QHash<const QQuickItem *, Drawn> &all)
{
    QStringList result;
    for (const auto &each : all)
        result << each.name;
    return result;
}

} // namespace

/** A window that shows before the saved list has been read, which takes as long as it takes. */
class TestLateList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingMovesWhenTheSavedListArrives_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("panels");
        QTest::addColumn<double>("cardHeight");
        QTest::newRow("an empty list") << 0 << false << 170.0;
        QTest::newRow("one application") << 1 << false << 56.0;
        QTest::newRow("twenty applications") << 20 << false << 20 * 57.0 - 1;
        QTest::newRow("an empty list, panels") << 0 << true << 170.0;
        QTest::newRow("one application, panels") << 1 << true << 56.0;
        QTest::newRow("twenty applications, panels") << 20 << true << 20 * 57.0 - 1;
    }

    void nothingMovesWhenTheSavedListArrives()
    {
        QFETCH(int, count);
        QFETCH(bool, panels);
        QFETCH(double, cardHeight);
        QTest::failOnWarning(QRegularExpression(u"Binding loop"_s));
        EarlyWindow window(manySamples(count));
        if (panels)
            window.showPanels();
        const auto before = drawn(window);
        window.readList();
        const auto after = drawn(window);

        QStringList stated{u"headerMaterial"_s, u"ownIcon"_s, u"statusDot"_s, u"dropZoneFill"_s,
            u"dropZoneTitleDrop an app here"_s, u"Blocked apps"_s};
        if (panels)
            stated << u"updateBox"_s << u"installationBox"_s;
        for (const auto &part : stated)
            QVERIFY2(names(before).contains(part), qUtf8Printable(part));
        for (auto each = before.cbegin(); each != before.cend(); ++each) {
            QVERIFY2(after.contains(each.key()), qUtf8Printable(each->name + u" has gone"_s));
            QVERIFY2(after[each.key()].place == each->place,
                qUtf8Printable(each->name + u" has moved"_s));
        }
        QCOMPARE(window.item(u"countBadge"_s)->property("count").toInt(), count);
        QCOMPARE(window.item(u"listCard"_s)->height(), cardHeight);
        QVERIFY(window.text(count == 0 ? u"No blocked apps"_s : u"App 00"_s) != nullptr);
    }

    void ofAListThatIsNotKnownNothingIsSaid()
    {
        EarlyWindow window({atlas});
        QVERIFY(window.text(u"Blocked apps"_s) != nullptr);
        QCOMPARE(window.text(u"No blocked apps"_s), nullptr);
        QCOMPARE(window.item(u"countBadge"_s), nullptr);
        QVERIFY(isTransparent(window.item(u"listCard"_s)));
        window.readList();
        QVERIFY(!isTransparent(window.item(u"listCard"_s)));
        QVERIFY(window.text(u"Atlas"_s) != nullptr);
    }

    void theListIsOnItsWayBeforeThereIsAWindow()
    {
        FakePlatform platform;
        app::AppBlockStore store(platform.ports);
        QCOMPARE(platform.scheduler.waitingBackgroundJobs(), 1);
        const ui::UserInterface interface(store, platform.ports);
        platform.scheduler.settle();
        QVERIFY(store.hasLoadedApplications());
        QVERIFY(!interface.window()->isVisible());
    }
};

QTEST_MAIN(TestLateList)
#include "tst_late_list.moc"
