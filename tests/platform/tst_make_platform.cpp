#include "platform/platform.h"
#include "state_folder.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTimer>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using zorvane::tests::StateFolder;

class TestMakePlatform : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<StateFolder>();
        qputenv("ZORVANE_SYSTEM_DIR", m_folder->filePath(QString()).toUtf8());
        QTest::ignoreMessage(QtInfoMsg,
            QRegularExpression(
                u"^Running on the simulated system in %1.* nothing is blocked on this system$"_s
                    .arg(QRegularExpression::escape(m_folder->filePath(QString())))));
        m_platform.emplace(makePlatform());
    }
    void cleanup() { m_platform.reset(); }

    void nothingIsWrittenYet()
    {
        QVERIFY(QDir(m_folder->filePath(QString()))
                    .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    void preferencesAreWrittenByTheEnd()
    {
        m_platform->preferences->setBoolean(u"protectionRequested"_s, true);
        m_platform->suites->open(u"group.x"_s)->setString(u"k"_s, u"v"_s);
        m_platform.reset();
        QVERIFY(m_folder->hasFile(u"preferences/dev.kestrelworks.Zorvane.plist"_s));
        QVERIFY(m_folder->hasFile(u"preferences/group.x.plist"_s));
    }

    void localFilesAreGrantedAndOthersAreNot()
    {
        const QUrl local = QUrl::fromLocalFile(u"/Applications/A.app"_s);
        QVERIFY(m_platform->fileAccess->begin(local));
        m_platform->fileAccess->end(local);
        QVERIFY(!m_platform->fileAccess->begin(QUrl(u"https://example.org/A.app"_s)));
    }

    void theDownloadsFolderIsTheUsers()
    {
        const QList<QString> folders = m_platform->actions->downloadsFolders();
        QVERIFY(!folders.isEmpty());
        QCOMPARE(
            folders.first(), QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
    }

    void unreadableListsAreKeptInTheUsersDataFolder()
    {
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        QCOMPARE(QString::fromStdString(m_platform->setAsideFolder.string()),
            data + "/zorvane/set-aside"_L1);
    }

    void systemSettingsAreStartedFromThePath()
    {
        m_folder->write(u"zorvane-system-settings"_s,
            "#!/bin/sh\necho started > \"$ZORVANE_SYSTEM_DIR/mark\"\n");
        QFile program(m_folder->filePath(u"zorvane-system-settings"_s));
        QVERIFY(program.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", m_folder->filePath(QString()).toUtf8() + ":" + path);
        m_platform->actions->openSystemSettings();
        qputenv("PATH", path);
        QTRY_COMPARE(m_folder->read(u"mark"_s), "started\n");
    }

    void missingSystemSettingsAreReported()
    {
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", m_folder->filePath(QString()).toUtf8());
        QTest::ignoreMessage(QtWarningMsg, "zorvane-system-settings could not be started");
        m_platform->actions->openSystemSettings();
        qputenv("PATH", path);
    }

    void comingToFrontShowsMinimisedWindowsAndNoHiddenOnes()
    {
        QWindow shown;
        QWindow hidden;
        shown.showMinimized();
        QVERIFY(shown.windowStates() & Qt::WindowMinimized);
        m_platform->actions->comeToFront();
        QVERIFY(!(shown.windowStates() & Qt::WindowMinimized));
        QVERIFY(!hidden.isVisible());
        QTRY_COMPARE(QGuiApplication::focusWindow(), &shown);
    }

    void terminatingEndsTheLoop()
    {
        QTimer::singleShot(0, this, [this] { m_platform->actions->terminate(); });
        QCOMPARE(QCoreApplication::exec(), 0);
    }

private:
    std::unique_ptr<StateFolder> m_folder;
    std::optional<Platform> m_platform;
};

QTEST_MAIN(TestMakePlatform)
#include "tst_make_platform.moc"
