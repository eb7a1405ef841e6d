#include "desktop_bus/private_bus.h"
#include "kills/busy_folder.h"
#include "kills/small_disk.h"
#include "platform/started_program.h"
#include "tests/bundle_files/bundle_files.h"

#include <fcntl.h>
#include <filesystem>
#include <QDir>
#include <QScopeGuard>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

const QString program = QStringLiteral(ZORVANE_PROGRAM);
const QString file = u"preferences/dev.kestrelworks.Zorvane.plist"_s;

/** Reads on until the program reports @p text; false if it ends or falls silent first. */
bool reports(StartedProgram &started, const QByteArray &text)
{
    for (;;) {
        const QByteArray line = started.errorLine();
        if (line.isEmpty() || line.contains(text))
            return !line.isEmpty();
    }
}

} // namespace

/** The whole program on disks and in folders that do not let it save. */
class TestHinderedSaves : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { shieldStartedPrograms(m_data.path(), m_bus.address()); }

    /** No list was damaged, and none was taken for it. */
    void cleanup() { QCOMPARE(setAsideBy(m_data.path()), QString()); }

    void aFullDiskIsReportedAndKeepsTheOldListUntilItHasRoomAgain()
    {
        BusyFolder folder;
        const SmallDisk disk(folder.state().filePath(u"preferences"_s));
        if (!disk.isMounted())
            QSKIP("only root can mount a small disk");
        folder.storeOldList();
        QVERIFY(disk.fill());
        StartedProgram started(program, folder.path());
        QVERIFY(reports(started, "cannot be written: No space left on device"));
        QVERIFY(started.isRunning());
        QCOMPARE(folder.stage(), 0);
        QCOMPARE(folder.damage(), QString());

        QVERIFY(disk.empty());
        folder.observeHelper();
        // The pass after five seconds takes the helper in, and saves.
        QTRY_COMPARE_WITH_TIMEOUT(folder.stage(), 2, 30'000);
        QCOMPARE(folder.damage(), QString());
    }

    void aReadOnlyFolderIsReportedAndTheOldListStays()
    {
        BusyFolder folder;
        const SmallDisk disk(folder.state().filePath(u"preferences"_s));
        if (!disk.isMounted())
            QSKIP("only root can mount a disk");
        folder.storeOldList();
        QVERIFY(disk.makeReadOnly());
        StartedProgram started(program, folder.path());
        QVERIFY(reports(started, "cannot be written: Read-only file system"));
        QVERIFY(started.isRunning());
        QCOMPARE(folder.stage(), 0);
    }

    void aFolderThatMayNotBeWrittenToIsReportedAndTheOldListStays()
    {
        BusyFolder folder;
        folder.storeOldList();
        constexpr auto closed = fs::perms(0555);
        fs::permissions(folder.state().path() / "preferences", closed);
        const auto open = qScopeGuard([&folder] {
            fs::permissions(folder.state().path() / "preferences", fs::perms::owner_all);
        });
        // It may lie where an ordinary user cannot go; an open file can be started all the same.
        const int opened = ::open(ZORVANE_PROGRAM, O_RDONLY);
        const auto close = qScopeGuard([opened] { ::close(opened); });
        const OrdinaryUser user(folder.state().path());
        StartedProgram started(u"/proc/self/fd/%1"_s.arg(opened), folder.path());
        QVERIFY(reports(started, "cannot be written: Permission denied"));
        QVERIFY(started.isRunning());
        QCOMPARE(folder.stage(), 0);
    }

    void aFolderInThePlaceOfThePreferencesIsReportedAndLeftAlone()
    {
        const BusyFolder folder;
        const QString inside = folder.state().filePath(file + u"/letter"_s);
        QVERIFY(QDir().mkpath(inside));
        StartedProgram started(program, folder.path());
        QVERIFY(reports(started, "cannot be read and counts as absent: it is not a regular file"));
        QVERIFY(reports(started, "cannot be written: it is not a regular file"));
        QVERIFY(started.isRunning());
        QVERIFY(QFileInfo(inside).isDir());
    }

    void aFolderInThePlaceOfAnotherFileDoesNotStopTheSaving_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"filter-configuration.json", "extension.json", "system.json"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void aFolderInThePlaceOfAnotherFileDoesNotStopTheSaving()
    {
        QFETCH(QString, name);
        BusyFolder folder;
        folder.storeOldList();
        QFile::remove(folder.state().filePath(name));
        QVERIFY(QDir().mkpath(folder.state().filePath(name + u"/letter"_s)));
        StartedProgram started(program, folder.path());
        QTRY_COMPARE_WITH_TIMEOUT(folder.stage(), 1, 30'000);
        QVERIFY(started.isRunning());
        QVERIFY(QFileInfo(folder.state().filePath(name + u"/letter"_s)).isDir());
    }

    void aSymbolicLinkIsReplacedAndWhatItLedToStays()
    {
        BusyFolder folder;
        folder.storeOldList();
        const QString elsewhere = folder.state().filePath(u"elsewhere.plist"_s);
        QVERIFY(QFile::rename(folder.state().filePath(file), elsewhere));
        QVERIFY(QFile::link(elsewhere, folder.state().filePath(file)));
        const QByteArray before = folder.state().read(u"elsewhere.plist"_s);
        StartedProgram started(program, folder.path());
        QTRY_COMPARE_WITH_TIMEOUT(folder.stage(), 1, 30'000);
        QCOMPARE(folder.damage(), QString());
        QVERIFY(!QFileInfo(folder.state().filePath(file)).isSymLink());
        QCOMPARE(folder.state().read(u"elsewhere.plist"_s), before);
    }

    void aDanglingSymbolicLinkCountsAsNoFile()
    {
        const BusyFolder folder;
        QVERIFY(QFile::link(u"/nowhere/at/all"_s, folder.state().filePath(file)));
        StartedProgram started(program, folder.path());
        QTRY_VERIFY_WITH_TIMEOUT(folder.preferences().contains(u"protectionRequested"_s), 30'000);
        QVERIFY(started.isRunning());
    }

private:
    QTemporaryDir m_data;
    PrivateBus m_bus;
};

QTEST_GUILESS_MAIN(TestHinderedSaves)
#include "tst_hindered_saves.moc"
