#include "app/records/blocked_application_json.h"
#include "ui/blocked_apps_model.h"
#include "ui/observed.h"
#include "ui/window_fixture.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using zorvane::ui::BlockedAppsModel;

namespace
{

SampleApplication named(const QString &name)
{
    return {name, u"org.example."_s + name.toLower(), u"TEAM123456"_s, std::nullopt};
}

/** A model over a store whose list has been loaded. */
struct Fixture {
    explicit Fixture(const QStringList &names)
    {
        QList<SampleApplication> applications;
        for (const auto &name : names)
            applications.append(named(name));
        platform.preferences.values.insert(u"blockedApplications"_s, storedList(applications));
        store = std::make_unique<zorvane::app::AppBlockStore>(platform.ports);
        model = std::make_unique<BlockedAppsModel>(*store);
        tester = std::make_unique<QAbstractItemModelTester>(
            model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        platform.scheduler.settle();
    }

    [[nodiscard]] QStringList names() const
    {
        QStringList result;
        for (int row = 0; row < model->rowCount(); ++row)
            result << model->index(row).data(BlockedAppsModel::NameRole).toString();
        return result;
    }

    void add(const QString &name, const QString &identifier)
    {
        const auto path = u"/Applications/%1.app"_s.arg(name);
        platform.addBundle(path, identifier, u"TEAM123456"_s, name);
        store->addApplication(QUrl::fromLocalFile(path));
        platform.scheduler.settle();
    }

    FakePlatform platform;
    std::unique_ptr<zorvane::app::AppBlockStore> store;
    std::unique_ptr<BlockedAppsModel> model;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

/** What a model has announced: the row and the roles of each change. */
QList<std::pair<int, QList<int>>> announced(const QSignalSpy &changes)
{
    QList<std::pair<int, QList<int>>> result;
    for (const auto &change : changes)
        result.append({change.at(0).toModelIndex().row(), change.at(2).value<QList<int>>()});
    return result;
}

const QList<int> componentRoles{
    BlockedAppsModel::ComponentCountRole, BlockedAppsModel::ComponentsRevisionRole};

} // namespace

class TestBlockedAppsModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLoadedListBecomesRows()
    {
        const Fixture fixture({u"Alpha"_s, u"Beta"_s});
        QCOMPARE(fixture.names(), (QStringList{u"Alpha"_s, u"Beta"_s}));
        QCOMPARE(fixture.model->count(), 2);
    }

    void anAdditionInsertsOneRow()
    {
        Fixture fixture({u"Alpha"_s, u"Gamma"_s});
        const QSignalSpy inserted(fixture.model.get(), &QAbstractItemModel::rowsInserted);
        const QSignalSpy changed(fixture.model.get(), &QAbstractItemModel::dataChanged);
        const QSignalSpy reset(fixture.model.get(), &QAbstractItemModel::modelReset);
        const QSignalSpy counted(fixture.model.get(), &BlockedAppsModel::countChanged);
        fixture.add(u"Beta"_s, u"org.example.beta"_s);
        QCOMPARE(fixture.names(), (QStringList{u"Alpha"_s, u"Beta"_s, u"Gamma"_s}));
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(inserted.first().at(1).toInt(), 1);
        QCOMPARE(changed.size(), 0);
        QCOMPARE(reset.size(), 0);
        QCOMPARE(counted.size(), 1);
    }

    void removingARowTakesItsApplicationFromTheStore()
    {
        Fixture fixture({u"Alpha"_s, u"Beta"_s, u"Gamma"_s});
        const QSignalSpy removed(fixture.model.get(), &QAbstractItemModel::rowsRemoved);
        fixture.model->remove(1);
        QCOMPARE(fixture.names(), (QStringList{u"Alpha"_s, u"Gamma"_s}));
        QCOMPARE(removed.size(), 1);
        QCOMPARE(fixture.store->applications().size(), 2);
        fixture.model->remove(-1);
        fixture.model->remove(2);
        QCOMPARE(fixture.store->applications().size(), 2);
    }

    void aNewComponentIsAnnouncedOfItsRowOnly()
    {
        Fixture fixture({u"Alpha"_s, u"Beta"_s});
        const QSignalSpy changed(fixture.model.get(), &QAbstractItemModel::dataChanged);
        observe(fixture.platform, {observedProcess(fixture.platform, u"Beta"_s, u"helper"_s)});
        QCOMPARE(announced(changed), (QList<std::pair<int, QList<int>>>{{1, componentRoles}}));
    }

    void aComponentInThePlaceOfAnotherLeavesTheCount()
    {
        Fixture fixture({u"Alpha"_s, u"Beta"_s});
        const auto unsignedProcess = [&](const QString &name) {
            return observedProcess(fixture.platform, u"Beta"_s, name, std::nullopt);
        };
        observe(fixture.platform, {unsignedProcess(u"curl"_s)});
        const QSignalSpy changed(fixture.model.get(), &QAbstractItemModel::dataChanged);
        observe(fixture.platform, {unsignedProcess(u"wget"_s)});
        QCOMPARE(announced(changed),
            (QList<std::pair<int, QList<int>>>{{1, {BlockedAppsModel::ComponentsRevisionRole}}}));
    }

    void aComponentThatIsSeenAgainIsNotAnnounced()
    {
        Fixture fixture({u"Alpha"_s, u"Beta"_s});
        observe(fixture.platform, {observedProcess(fixture.platform, u"Beta"_s, u"helper"_s)});
        const auto lastSeen = [&] {
            const auto components
                = fixture.store->networkComponents({fixture.store->applications().at(1)});
            return components.first().last().lastSeenAt;
        };
        const auto before = lastSeen();
        QVERIFY(before.has_value());
        const QSignalSpy changed(fixture.model.get(), &QAbstractItemModel::dataChanged);
        observe(fixture.platform, {observedProcess(fixture.platform, u"Beta"_s, u"helper"_s)});
        QVERIFY(lastSeen() > before);
        QCOMPARE(changed.size(), 0);
    }

    void aNewIconIsAnnouncedAlone()
    {
        FakePlatform platform;
        auto records = *zorvane::records::decodedApplications(
            storedList({named(u"Alpha"_s), named(u"Beta"_s)}));
        records.first().inspectionVersion = 1;
        platform.preferences.values.insert(
            u"blockedApplications"_s, zorvane::records::encodedApplications(records));
        platform.addBundle(
            u"/Applications/Alpha.app"_s, u"org.example.alpha"_s, u"TEAM123456"_s, u"Alpha"_s);
        platform.icons.image = QImage(8, 8, QImage::Format_ARGB32);
        platform.icons.image.fill(Qt::red);
        zorvane::app::AppBlockStore store(platform.ports);
        BlockedAppsModel model(store);
        platform.scheduler.runBackground();
        platform.scheduler.runPosted();
        QCOMPARE(model.count(), 2);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        platform.scheduler.settle();
        QCOMPARE(announced(changed),
            (QList<std::pair<int, QList<int>>>{{0, {BlockedAppsModel::IconRole}}}));
    }

    void neighboursThatChangeAlikeAreAnnouncedTogether()
    {
        FakePlatform platform;
        auto records = *zorvane::records::decodedApplications(storedList(
            {named(u"Alpha"_s), named(u"Beta"_s), named(u"Gamma"_s), named(u"Other"_s)}));
        for (auto &record : records)
            record.inspectionVersion = 1;
        platform.preferences.values.insert(
            u"blockedApplications"_s, zorvane::records::encodedApplications(records));
        const auto rename = [&](const QString &name) {
            platform.addBundle(u"/Applications/%1.app"_s.arg(name),
                u"org.example."_s + name.toLower(), u"TEAM123456"_s, u"New "_s + name);
        };
        rename(u"Alpha"_s);
        rename(u"Beta"_s);
        rename(u"Other"_s);
        zorvane::app::AppBlockStore store(platform.ports);
        BlockedAppsModel model(store);
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        platform.scheduler.runBackground();
        platform.scheduler.runPosted();
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        platform.scheduler.settle();
        QList<std::pair<int, int>> rows;
        for (const auto &change : changed)
            rows.append({change.at(0).toModelIndex().row(), change.at(1).toModelIndex().row()});
        QCOMPARE(rows, (QList<std::pair<int, int>>{{0, 1}, {3, 3}}));
    }

    void anApplicationThatIsNamedAnewChangesAndThenMoves()
    {
        Fixture fixture({u"Alpha"_s, u"Beta"_s, u"Gamma"_s});
        // A record of an older inspection is made anew, and its bundle has another name by now.
        auto stale = zorvane::records::decodedApplications(
            *fixture.platform.preferences.data(u"blockedApplications"_s));
        for (auto &record : *stale)
            record.inspectionVersion
                = record.name == u"Alpha" ? 1 : zorvane::records::currentInspectionVersion;
        FakePlatform platform;
        platform.preferences.values.insert(
            u"blockedApplications"_s, zorvane::records::encodedApplications(*stale));
        platform.addBundle(
            u"/Applications/Alpha.app"_s, u"org.example.alpha"_s, u"TEAM123456"_s, u"Omega"_s);
        zorvane::app::AppBlockStore store(platform.ports);
        BlockedAppsModel model(store);
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        platform.scheduler.runBackground();
        platform.scheduler.runPosted();
        QCOMPARE(model.index(0).data(BlockedAppsModel::NameRole).toString(), u"Alpha"_s);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        platform.scheduler.settle();
        QCOMPARE(changed.size(), 1);
        QCOMPARE(model.index(0).data(BlockedAppsModel::NameRole).toString(), u"Omega"_s);
        // The next addition sorts the list, and takes the renamed one to its place.
        const QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        const auto path = u"/Applications/Delta.app"_s;
        platform.addBundle(path, u"org.example.delta"_s, u"TEAM123456"_s, u"Delta"_s);
        store.addApplication(QUrl::fromLocalFile(path));
        platform.scheduler.settle();
        QCOMPARE(model.index(3).data(BlockedAppsModel::NameRole).toString(), u"Omega"_s);
        QVERIFY(!moved.isEmpty());
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(removed.size(), 0);
        QCOMPARE(changed.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestBlockedAppsModel)
#include "tst_blocked_apps_model.moc"
