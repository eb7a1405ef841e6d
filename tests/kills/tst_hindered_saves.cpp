#include "desktop_bus/notification_screen.h"
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
const QString agent = QStringLiteral(ZORVANE_UPDATE_AGENT);
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

    void aFullDiskKeepsWhatIsKnownOfTheExtensionAndIsReported()
    {
        BusyFolder folder;
        const SmallDisk disk(folder.path());
        if (!disk.isMounted())
            QSKIP("only root can mount a small disk");
        QVERIFY(QDir().mkpath(folder.state().filePath(u"preferences"_s)));
        folder.storeOldList();
        const QByteArray state = R"({"approved":true,"active":false,"kept":1})";
        folder.state().write(u"extension.json"_s, state);
        QVERIFY(disk.fill());
        StartedProgram started(program, folder.path());
        QVERIFY(reports(started, "extension could not be installed: No space left on device"));
        QVERIFY(started.isRunning());
        QCOMPARE(folder.state().read(u"extension.json"_s), state);
        QCOMPARE(folder.stage(), 0);
        QCOMPARE(folder.damage(), QString());
    }

    void anAgentOnAFullDiskReportsItAndAnnouncesAgainWhenItHasRoom()
    {
        BusyFolder folder;
        const SmallDisk disk(folder.state().filePath(u"preferences"_s));
        if (!disk.isMounted())
            QSKIP("only root can mount a small disk");
        folder.storeCurrentList();
        folder.announceVersion(u"99.1"_s);
        QVERIFY(disk.fill());
        {
            StartedProgram started(agent, folder.path());
            QTRY_COMPARE_WITH_TIMEOUT(m_screen.shown.size(), 1, 30'000);
            QVERIFY(reports(started, "cannot be written: No space left on device"));
            QCOMPARE(folder.announcedVersion(), QString());
            QCOMPARE(folder.stage(), 1);
            QCOMPARE(folder.damage(), QString());
        }
        QVERIFY(disk.empty());
        const StartedProgram started(agent, folder.path());
        // It takes the place of the one that is still shown.
        QTRY_COMPARE_WITH_TIMEOUT(m_screen.calls.filter(u"notify"_s).size(), 2, 30'000);
        QTRY_VERIFY_WITH_TIMEOUT(folder.announcedVersion().contains(u"99.1"_s), 30'000);
        QCOMPARE(folder.stage(), 1);
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
        QTest::addColumn<QByteArray>("failure");
        QTest::newRow("filter configuration")
            << u"filter-configuration.json"_s
            << QByteArray("filter configuration could not be stored: it is not a regular file");
        QTest::newRow("extension")
            << u"extension.json"_s
            << QByteArray("extension could not be installed: it is not a regular file");
        // It is only read.
        QTest::newRow("behaviour") << u"system.json"_s << QByteArray();
    }

    void aFolderInThePlaceOfAnotherFileDoesNotStopTheSaving()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, failure);
        BusyFolder folder;
        folder.storeOldList();
        QFile::remove(folder.state().filePath(name));
        QVERIFY(QDir().mkpath(folder.state().filePath(name + u"/letter"_s)));
        StartedProgram started(program, folder.path());
        QVERIFY(reports(started,
            name.toUtf8() + " cannot be read and counts as absent: it is not a regular file"));
        QVERIFY(failure.isEmpty() || reports(started, failure));
        QTRY_VERIFY_WITH_TIMEOUT(folder.stage() >= 1, 30'000);
        QVERIFY(started.isRunning());
        QVERIFY(QFileInfo(folder.state().filePath(name + u"/letter"_s)).isDir());
    }

    void aSymbolicLinkIsReplacedAndWhatItLedToStays_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : {file, u"filter-configuration.json"_s, u"extension.json"_s})
            QTest::newRow(qPrintable(name)) << name;
    }

    void aSymbolicLinkIsReplacedAndWhatItLedToStays()
    {
        QFETCH(QString, name);
        BusyFolder folder;
        folder.storeOldList();
        if (name != file)
            folder.state().write(name, "{}");
        const QString place = folder.state().filePath(name);
        const QString elsewhere = folder.state().filePath(u"elsewhere"_s);
        QVERIFY(QFile::rename(place, elsewhere));
        QVERIFY(QFile::link(elsewhere, place));
        const QByteArray before = folder.state().read(u"elsewhere"_s);
        StartedProgram started(program, folder.path());
        QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo(place).isSymLink(), 30'000);
        QTRY_VERIFY_WITH_TIMEOUT(folder.stage() >= 1, 30'000);
        QCOMPARE(folder.damage(), QString());
        QCOMPARE(folder.state().read(u"elsewhere"_s), before);
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
    const NotificationScreen m_screen{m_bus};
};

QTEST_GUILESS_MAIN(TestHinderedSaves)
#include "tst_hindered_saves.moc"
