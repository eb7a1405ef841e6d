#include "ui/observed.h"
#include "ui/samples.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using zorvane::ui::BlockedAppsModel;

namespace
{

/** A record that runs as itself and as many helpers. */
zorvane::records::BlockedApplication withHelpers(const QString &name, int helpers)
{
    zorvane::records::BlockedApplication record;
    record.id = QUuid::createUuid();
    record.name = name;
    record.bundleIdentifier = record.signingIdentifier = u"org.example."_s + name.toLower();
    record.teamIdentifier = u"TEAM123456"_s;
    record.inspectionVersion = zorvane::records::currentInspectionVersion;
    record.path = u"/Applications/%1.app"_s.arg(name);
    QList<zorvane::records::CodeIdentity> identities;
    for (int i = 1; i <= helpers; ++i)
        identities.append({u"org.example.helper%1"_s.arg(i, 4, 10, QChar(u'0')), u"TEAM123456"_s});
    record.auxiliaryCodeIdentities = identities;
    return record;
}

/** The window, and its rows as a test sees them. */
struct Rows : WindowFixture {
    using WindowFixture::WindowFixture;

    [[nodiscard]] QList<QQuickItem *> called(const QString &name) const
    {
        return items([&](const QQuickItem *item) { return item->objectName() == name; });
    }

    [[nodiscard]] QStringList texts(const QString &name) const
    {
        QStringList result;
        for (const QQuickItem *item : called(name))
            result << item->property("text").toString();
        return result;
    }

    void toggle(int row)
    {
        const auto before = called(u"disclosure"_s).value(row)->property("open").toBool();
        click(called(u"disclosure"_s).value(row));
        auto *const lines = rowOf(called(u"disclosure"_s).value(row));
        QTRY_COMPARE(lines->property("unfolding").toReal(), before ? 0.0 : 1.0);
        // What is below, and the page, follow only with the next frame.
        settle();
    }

    /** The row that holds an item of it. */
    [[nodiscard]] static QQuickItem *rowOf(QQuickItem *item)
    {
        while (item != nullptr && item->metaObject()->indexOfSignal("removeRequested()") < 0)
            item = item->parentItem();
        return item;
    }
};

} // namespace

class TestComponentRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); }

    void unfoldingMakesTheLinesOnce()
    {
        Rows rows({sample(u"Atlas"_s)});
        const QSignalSpy made(
            Rows::rowOf(rows.called(u"disclosure"_s).value(0)), SIGNAL(linesChanged()));
        rows.toggle(0);
        QCOMPARE(made.size(), 1);
    }

    void aCountOfOneIsSingularEveryOtherPlural()
    {
        Rows f({sample(u"Alpha"_s), sample(u"Beta"_s)});
        observe(f.platform, {observedProcess(f.platform, u"Beta"_s, u"helper"_s)});
        QCOMPARE(f.texts(u"disclosure"_s),
            (QStringList{u"1 network process"_s, u"2 network processes"_s}));
    }

    void anUnfoldedRowSaysNameAndKindOfEveryComponent()
    {
        Rows f;
        f.store->add(withHelpers(u"Alpha"_s, 1));
        f.settle();
        observe(
            f.platform, {observedProcess(f.platform, u"Alpha"_s, u"Late Tool"_s, std::nullopt)});
        QVERIFY(f.called(u"componentName"_s).isEmpty());
        f.toggle(0);
        QCOMPARE(f.texts(u"componentName"_s),
            (QStringList{u"Alpha"_s, u"Late Tool"_s, u"org.example.helper0001"_s}));
        QCOMPARE(
            f.texts(u"componentKind"_s), (QStringList{u"Main app"_s, u"Observed"_s, u"Bundled"_s}));
        QVERIFY(f.text(u"Blocked"_s));
        QVERIFY(f.button(u"Remove from list"_s));
    }

    void aLongNameOfAComponentIsElidedAndWholeInItsToolTip()
    {
        const auto longName = u"A Very Long Name Indeed "_s.repeated(8).trimmed();
        Rows f({sample(u"Alpha"_s)});
        observe(f.platform, {observedProcess(f.platform, u"Alpha"_s, longName, std::nullopt)});
        f.toggle(0);
        QQuickItem *const name = f.text(longName);
        QVERIFY(name->property("truncated").toBool());
        QCOMPARE(name->property("elide").toInt(), int(Qt::ElideMiddle));
        QVERIFY(inWindow(name).right() < inWindow(f.called(u"componentKind"_s).last()).left());
        QTest::mouseMove(f.window(), inWindow(name).center().toPoint());
        QTRY_VERIFY(f.item(u"toolTip"_s) != nullptr);
        const auto whole = f.items([&](const QQuickItem *item) {
            return item->property("text") == longName && f.item(u"toolTip"_s)->isAncestorOf(item);
        });
        QCOMPARE(whole.size(), 1);
    }

    void foldingOneRowLeavesTheOthersAsTheyAre()
    {
        Rows f({sample(u"Alpha"_s), sample(u"Beta"_s), sample(u"Gamma"_s)});
        f.toggle(1);
        const auto open
            = [&](int row) { return f.called(u"disclosure"_s).at(row)->property("open").toBool(); };
        QCOMPARE((QList{open(0), open(1), open(2)}), (QList{false, true, false}));
        f.toggle(0);
        f.toggle(1);
        QCOMPARE((QList{open(0), open(1), open(2)}), (QList{true, false, false}));
    }

    void aRowThatIsMadeAnewIsFolded()
    {
        Rows f({sample(u"Alpha"_s)});
        f.toggle(0);
        const auto record = f.store->applications().constFirst();
        f.store->remove(record);
        f.settle();
        f.store->add(record);
        f.settle();
        QVERIFY(!f.called(u"disclosure"_s).first()->property("open").toBool());
        QVERIFY(f.called(u"componentName"_s).isEmpty());
    }

    void aPassThatChangesOneRecordAnnouncesOnlyItsRow()
    {
        Rows f({sample(u"Alpha"_s), sample(u"Beta"_s), sample(u"Gamma"_s)});
        observe(f.platform, {}); // the first pass brings all records to the present form
        BlockedAppsModel model(*f.store);
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        observe(f.platform, {observedProcess(f.platform, u"Beta"_s, u"helper"_s)});
        QCOMPARE(model.index(1).data(BlockedAppsModel::ComponentCountRole).toInt(), 2);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 1);
        QCOMPARE(changed.first().at(1).toModelIndex().row(), 1);
        QCOMPARE(reset.size() + inserted.size() + removed.size(), 0);
    }

    void aProcessThatIsOnlyShownAnnouncesOnlyTheLinesOfItsRow()
    {
        Rows f({sample(u"Alpha"_s), sample(u"Beta"_s)});
        observe(f.platform, {}); // the first pass brings all records to the present form
        BlockedAppsModel model(*f.store);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        observe(f.platform, {observedProcess(f.platform, u"Alpha"_s, u"curl"_s, std::nullopt)});
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 0);
        QCOMPARE(changed.first().at(2).value<QList<int>>(),
            (QList<int>{
                BlockedAppsModel::ComponentCountRole, BlockedAppsModel::ComponentsRevisionRole}));
    }

    void aPassThatFindsNothingNewAnnouncesNothing()
    {
        Rows f({sample(u"Alpha"_s)});
        observe(f.platform, {}); // the first pass brings all records to the present form
        BlockedAppsModel model(*f.store);
        const auto processes = QList{observedProcess(f.platform, u"Alpha"_s, u"helper"_s)};
        observe(f.platform, processes);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        observe(f.platform, processes);
        observe(f.platform, processes);
        QCOMPARE(changed.size(), 0);
    }

    void aPassNeitherRebuildsOtherRowsNorFoldsOpenOnes()
    {
        Rows f({sample(u"Alpha"_s), sample(u"Beta"_s)});
        f.toggle(0);
        f.toggle(1);
        QQuickItem *const alpha = Rows::rowOf(f.called(u"disclosure"_s).at(0));
        QQuickItem *const beta = Rows::rowOf(f.called(u"disclosure"_s).at(1));
        QQuickItem *const line = f.called(u"componentName"_s).first();
        observe(f.platform, {observedProcess(f.platform, u"Beta"_s, u"helper"_s)});
        QCOMPARE(Rows::rowOf(f.called(u"disclosure"_s).at(0)), alpha);
        QCOMPARE(Rows::rowOf(f.called(u"disclosure"_s).at(1)), beta);
        QCOMPARE(f.called(u"componentName"_s).first(), line);
        QVERIFY(alpha->property("unfolded").toBool());
        QVERIFY(beta->property("unfolded").toBool());
        QTRY_COMPARE(
            f.texts(u"componentName"_s), (QStringList{u"Alpha"_s, u"Beta"_s, u"helper"_s}));
    }

    void anAddedApplicationShowsWhatWasObservedBefore()
    {
        Rows f;
        observe(f.platform, {observedProcess(f.platform, u"Alpha"_s, u"helper"_s)});
        f.store->add(withHelpers(u"Alpha"_s, 0));
        f.settle();
        QCOMPARE(f.texts(u"disclosure"_s), QStringList{u"2 network processes"_s});
    }

    void ofManyComponentsOnlyThoseInViewAreBuilt()
    {
        Rows f;
        f.store->add(withHelpers(u"Alpha"_s, 499));
        f.settle();
        QCOMPARE(f.texts(u"disclosure"_s), QStringList{u"500 network processes"_s});
        f.toggle(0);
        QVERIFY(f.called(u"componentName"_s).size() < 40);
        QCOMPARE(f.called(u"componentLines"_s).first()->height(), 1 + 4 + 500 * 32.0 + 6);
        QQuickItem *const page = f.item(u"page"_s);
        page->setProperty("contentY", page->property("contentHeight").toReal() - page->height());
        QTRY_VERIFY(f.text(u"org.example.helper0499"_s));
        QVERIFY(f.called(u"componentName"_s).size() < 40);
    }

    void anOpenRowFollowsAProcessThatDisappears()
    {
        Rows f({sample(u"Alpha"_s)});
        observe(f.platform, {observedProcess(f.platform, u"Alpha"_s, u"curl"_s, std::nullopt)});
        f.toggle(0);
        QCOMPARE(f.texts(u"componentName"_s), (QStringList{u"Alpha"_s, u"curl"_s}));
        observe(f.platform, {});
        QTRY_COMPARE(f.texts(u"componentName"_s), QStringList{u"Alpha"_s});
        QCOMPARE(f.texts(u"disclosure"_s), QStringList{u"1 network process"_s});
    }

    void aLongCountHasAWiderButtonAndTheBadgeMakesWay_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("isWider");
        QTest::newRow("two digits") << 10 << false;
        QTest::newRow("three digits") << 100 << true;
        QTest::newRow("four digits") << 1000 << true;
    }

    void aLongCountHasAWiderButtonAndTheBadgeMakesWay()
    {
        QFETCH(int, count);
        QFETCH(bool, isWider);
        Rows f;
        f.store->add(withHelpers(u"Alpha"_s, count - 1));
        f.settle();
        const auto *const disclosure = f.item(u"disclosure"_s);
        QCOMPARE(disclosure->property("text").toString(), u"%1 network processes"_s.arg(count));
        QCOMPARE(disclosure->width() > 164, isWider);
        const auto parts = disclosure->childItems();
        QCOMPARE(parts.size(), 3);
        for (const auto *const part : parts) {
            QVERIFY(part->x() >= 0);
            QVERIFY(part->x() + part->width() <= disclosure->width() - 8);
        }
        const auto *const badge = f.item(u"blockedBadge"_s);
        QCOMPARE(badge->x() + badge->width(), disclosure->x() - 10);
        const auto *const name = f.item(u"rowName"_s);
        QCOMPARE(name->x() + name->width(), badge->x() - 16);
    }
};

QTEST_MAIN(TestComponentRows)
#include "tst_component_rows.moc"
