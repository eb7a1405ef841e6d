#include "app/set_aside_lists.h"

#include "sample_applications.h"
#include "store_fixture.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using app::SetAsideLists;

namespace
{

const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);
const QByteArray damaged = "[{\"id\":";

std::filesystem::path inside(const QTemporaryDir &folder)
{
    return folder.filePath(u"zorvane/set-aside"_s).toStdString();
}

QStringList filesIn(const QTemporaryDir &folder)
{
    return QDir(folder.filePath(u"zorvane/set-aside"_s))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QByteArray contentOf(const QTemporaryDir &folder, const QString &name)
{
    QFile file(folder.filePath(u"zorvane/set-aside/"_s + name));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/** A system that has a damaged list stored and this folder for it. */
struct DamagedSystem : StoreFixture {
    explicit DamagedSystem(const std::filesystem::path &folder)
    {
        system.preferences.values.insert(listKey, damaged);
        system.ports.setAsideFolder = folder;
    }

    void addOne(app::AppBlockStore &store, const QString &name)
    {
        store.add(sampleApplication(name, u"com.example."_s + name));
        system.scheduler.settle();
    }
};

} // namespace

class TestSetAsideLists : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anUnreadableListIsSetAsideOnceBeforeTheFirstSave()
    {
        const QTemporaryDir folder;
        DamagedSystem f(inside(folder));
        const auto store = f.loadedStore();
        QVERIFY(store->applications().isEmpty());
        QVERIFY(!store->alertMessage());
        QVERIFY(!QFile::exists(folder.filePath(u"zorvane"_s)));
        QList<qsizetype> filesBeforeEachSave;
        f.system.preferences.beforeSet = [&](const QString &key) {
            if (key == listKey)
                filesBeforeEachSave.append(filesIn(folder).size());
        };
        f.addOne(*store, u"One"_s);
        f.addOne(*store, u"Two"_s);
        QCOMPARE(filesBeforeEachSave, (QList<qsizetype>{1, 1}));
        QCOMPARE(
            filesIn(folder), QStringList(u"blocked-applications-2026-03-01T12-00-00-000Z.json"_s));
        QCOMPARE(contentOf(folder, filesIn(folder).first()), damaged);
        QCOMPARE(f.storedList(), store->applications());
    }

    void itIsSetAsideOnThePersistenceQueueAndNotOnTheMainThread()
    {
        const QTemporaryDir folder;
        DamagedSystem f(inside(folder));
        const auto store = f.loadedStore();
        store->add(sampleApplication(u"One"_s, u"com.example.One"_s));
        QVERIFY(filesIn(folder).isEmpty());
        f.system.scheduler.runBackgroundJob(f.system.scheduler.waitingBackgroundJobs() - 1);
        QCOMPARE(filesIn(folder).size(), 1);
    }

    void aListThatCanBeReadIsNotSetAside()
    {
        const QTemporaryDir folder;
        DamagedSystem f(inside(folder));
        f.storeList({sampleApplication(u"One"_s, u"com.example.One"_s)});
        const auto store = f.loadedStore();
        f.addOne(*store, u"Two"_s);
        QVERIFY(filesIn(folder).isEmpty());
    }

    void aFolderThatCannotBeMadeDoesNotStopTheSave()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"zorvane"_s));
        QVERIFY(file.open(QFile::WriteOnly));
        DamagedSystem f(inside(folder));
        const auto store = f.loadedStore();
        f.addOne(*store, u"One"_s);
        QCOMPARE(f.storedList().size(), 1);
        QVERIFY(!store->alertMessage());
    }

    void aSystemWithoutSuchAFolderSavesAllTheSame()
    {
        DamagedSystem f({});
        const auto store = f.loadedStore();
        f.addOne(*store, u"One"_s);
        QCOMPARE(f.storedList().size(), 1);
    }

    void theFiveNewestAreKept()
    {
        const QTemporaryDir folder;
        const SetAsideLists lists(inside(folder));
        for (int day = 0; day < 7; ++day)
            lists.keep("damage " + QByteArray::number(day), noon.addDays(day));
        const QStringList files = filesIn(folder);
        QCOMPARE(files.size(), 5);
        QCOMPARE(contentOf(folder, files.first()), "damage 2");
        QCOMPARE(contentOf(folder, files.last()), "damage 6");
    }

    void aListIsKeptThoughTheOthersAreDatedLaterByAClockThatWasAhead()
    {
        const QTemporaryDir folder;
        const SetAsideLists lists(inside(folder));
        for (int day = 0; day < 5; ++day)
            lists.keep("damage " + QByteArray::number(day), noon.addYears(4).addDays(day));
        lists.keep("now", noon);
        const QStringList files = filesIn(folder);
        QCOMPARE(files.size(), 5);
        QCOMPARE(contentOf(folder, files.first()), "now");
        QCOMPARE(contentOf(folder, files.at(1)), "damage 1");
        QCOMPARE(contentOf(folder, files.last()), "damage 4");
    }

    void equalBytesAreKeptOnce()
    {
        const QTemporaryDir folder;
        const SetAsideLists lists(inside(folder));
        lists.keep(damaged, noon);
        lists.keep(damaged, noon.addDays(1));
        QCOMPARE(filesIn(folder).size(), 1);
    }

    void twoListsOfOneMomentAreBothKept()
    {
        const QTemporaryDir folder;
        const SetAsideLists lists(inside(folder));
        lists.keep("one", noon);
        lists.keep("two", noon);
        QCOMPARE(filesIn(folder).size(), 2);
    }

    void otherFilesAndLinksInTheFolderAreLeftAlone()
    {
        const QTemporaryDir folder;
        const SetAsideLists lists(inside(folder));
        lists.keep("first", noon);
        const QDir kept(folder.filePath(u"zorvane/set-aside"_s));
        const QString own = u"letter.txt"_s;
        QVERIFY(QFile::copy(kept.filePath(filesIn(folder).first()), kept.filePath(own)));
        const QString link = u"blocked-applications-2000-01-01T00-00-00-000Z.json"_s;
        QVERIFY(QFile::link(kept.filePath(own), kept.filePath(link)));
        for (int day = 1; day < 7; ++day)
            lists.keep("damage " + QByteArray::number(day), noon.addDays(day));
        QVERIFY(QFileInfo(kept.filePath(link)).isSymLink());
        QVERIFY(QFile::exists(kept.filePath(own)));
        QCOMPARE(filesIn(folder).size(), 7);
    }

    void aLinkUnderTheNameOfTheMomentIsNotWrittenThrough()
    {
        const QTemporaryDir folder;
        const QDir kept(folder.filePath(u"zorvane/set-aside"_s));
        QVERIFY(kept.mkpath(u"."_s));
        const QString link = u"blocked-applications-2026-03-01T12-00-00-000Z.json"_s;
        const QString elsewhere = folder.filePath(u"elsewhere"_s);
        QVERIFY(QFile::link(elsewhere, kept.filePath(link)));
        SetAsideLists(inside(folder)).keep(damaged, noon);
        QCOMPARE(filesIn(folder).size(), 2);
        QVERIFY(QFileInfo(kept.filePath(link)).isSymLink());
        QVERIFY(!QFile::exists(elsewhere));
    }

    void onlyTheUserCanReadThem()
    {
        const QTemporaryDir folder;
        const SetAsideLists lists(inside(folder));
        lists.keep(damaged, noon);
        const auto permissions = QFile::permissions(
            folder.filePath(u"zorvane/set-aside/"_s + filesIn(folder).first()));
        QVERIFY(permissions.testFlag(QFile::ReadOwner));
        QVERIFY(!(permissions & (QFile::ReadGroup | QFile::ReadOther)));
    }
};

QTEST_GUILESS_MAIN(TestSetAsideLists)
#include "tst_set_aside_lists.moc"
