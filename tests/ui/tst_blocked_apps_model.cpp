#include "app/records/blocked_application_json.h"
#include "ui/blocked_apps_model.h"
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

/** A stored list; the applications named in @p stale are of an older inspection. */
QByteArray storedNames(const QStringList &names, const QStringList &stale)
{
    QList<SampleApplication> applications;
    for (const auto &name : names)
        applications.append(sample(name));
    auto records = *zorvane::records::decodedApplications(storedList(applications));
    for (auto &record : records) {
        if (stale.contains(record.name))
            record.inspectionVersion = 1;
    }
    return zorvane::records::encodedApplications(records);
}

/**
 * A model over a store whose list has been loaded. The stale ones are inspected again when what
 * waits is done next.
 */
struct Fixture {
    explicit Fixture(const QStringList &names, const QStringList &stale = {})
    {
        platform.preferences.values.insert(u"blockedApplications"_s, storedNames(names, stale));
        store = std::make_unique<zorvane::app::AppBlockStore>(platform.ports);
        model = std::make_unique<BlockedAppsModel>(*store);
        tester = std::make_unique<QAbstractItemModelTester>(
            model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        platform.scheduler.runBackground();
        platform.scheduler.runPosted();
        if (stale.isEmpty())
            platform.scheduler.settle();
    }

    [[nodiscard]] QStringList names() const
    {
        QStringList result;
        for (int row = 0; row < model->rowCount(); ++row)
            result << model->index(row).data(BlockedAppsModel::NameRole).toString();
        return result;
    }

    /** Puts a bundle of @p name where the application is, or is to be. */
    QString install(const QString &application, const QString &name)
    {
        auto path = u"/Applications/%1.app"_s.arg(application);
        platform.addBundle(path, u"org.example."_s + application.toLower(), u"TEAM123456"_s, name);
        return path;
    }

    void add(const QString &name)
    {
        store->addApplication(QUrl::fromLocalFile(install(name, name)));
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
        fixture.add(u"Beta"_s);
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
        Fixture fixture({u"Alpha"_s, u"Beta"_s}, {u"Alpha"_s});
        QCOMPARE(fixture.model->count(), 2);
        fixture.install(u"Alpha"_s, u"Alpha"_s);
        auto &icon = fixture.platform.icons.image;
        icon = QImage(8, 8, QImage::Format_ARGB32);
        icon.fill(Qt::red);
        const QSignalSpy changed(fixture.model.get(), &QAbstractItemModel::dataChanged);
        fixture.platform.scheduler.settle();
        QCOMPARE(announced(changed),
            (QList<std::pair<int, QList<int>>>{{0, {BlockedAppsModel::IconRole}}}));
    }

    void neighboursThatChangeAlikeAreAnnouncedTogether()
    {
        const QStringList names{u"Alpha"_s, u"Beta"_s, u"Gamma"_s, u"Other"_s};
        Fixture fixture(names, names);
        for (const auto &name : {u"Alpha"_s, u"Beta"_s, u"Other"_s})
            fixture.install(name, u"New "_s + name);
        const QSignalSpy changed(fixture.model.get(), &QAbstractItemModel::dataChanged);
        fixture.platform.scheduler.settle();
        QList<std::pair<int, int>> rows;
        for (const auto &change : changed)
            rows.append({change.at(0).toModelIndex().row(), change.at(1).toModelIndex().row()});
        QCOMPARE(rows, (QList<std::pair<int, int>>{{0, 1}, {3, 3}}));
    }

    void anApplicationThatIsNamedAnewChangesAndThenMoves()
    {
        Fixture fixture({u"Alpha"_s, u"Beta"_s, u"Gamma"_s}, {u"Alpha"_s});
        fixture.install(u"Alpha"_s, u"Omega"_s);
        QCOMPARE(fixture.names(), (QStringList{u"Alpha"_s, u"Beta"_s, u"Gamma"_s}));
        const QSignalSpy changed(fixture.model.get(), &QAbstractItemModel::dataChanged);
        fixture.platform.scheduler.settle();
        QCOMPARE(changed.size(), 1);
        QCOMPARE(fixture.names(), (QStringList{u"Omega"_s, u"Beta"_s, u"Gamma"_s}));
        // The next addition sorts the list, and takes the renamed one to its place.
        const QSignalSpy moved(fixture.model.get(), &QAbstractItemModel::rowsMoved);
        const QSignalSpy inserted(fixture.model.get(), &QAbstractItemModel::rowsInserted);
        const QSignalSpy removed(fixture.model.get(), &QAbstractItemModel::rowsRemoved);
        fixture.add(u"Delta"_s);
        QCOMPARE(fixture.names(), (QStringList{u"Beta"_s, u"Delta"_s, u"Gamma"_s, u"Omega"_s}));
        QVERIFY(!moved.isEmpty());
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(removed.size(), 0);
        QCOMPARE(changed.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestBlockedAppsModel)
#include "tst_blocked_apps_model.moc"
