#include "platform/simulated/main_bundle.h"
#include "platform/simulated/simulated_system.h"
#include "state_folder.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;
using zorvane::tests::StateFolder;

class TestSimulatedSystem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_folder = std::make_unique<StateFolder>();
    }

    void theFolderIsTheOneThatTheEnvironmentNames()
    {
        qputenv("ZORVANE_SYSTEM_DIR", "/somewhere/else");
        QCOMPARE(SimulatedSystem::standardFolder(), std::filesystem::path("/somewhere/else"));
        qunsetenv("ZORVANE_SYSTEM_DIR");
        qputenv("XDG_DATA_HOME", "/data");
        QCOMPARE(SimulatedSystem::standardFolder(), std::filesystem::path("/data/zorvane/system"));
    }

    void theFolderIsNotTouchedBeforeSomethingIsWritten()
    {
        const auto folder = m_folder->path() / "not" / "there";
        SimulatedSystem system(folder);
        QCOMPARE(system.behaviour(), standardBehaviour());
        QVERIFY(!std::filesystem::exists(folder));
    }

    void theSystemChangesWhileTheProgramRuns()
    {
        const auto system = m_folder->system();
        const SimulatedMainBundle bundle(system);
        const SimulatedEntitlements entitlements(system);
        QCOMPARE(bundle.location(), std::filesystem::path("/Applications/Zorvane.app"));
        QCOMPARE(bundle.buildVersion(), u"1"_s);

        m_folder->behave("{'bundlePath': '/mnt/Zorvane.app', 'build': null, "
                         "'bundleIdentifier': 'a', 'shortVersion': '3', 'applicationGroups': []}");
        QCOMPARE(bundle.location(), std::filesystem::path("/mnt/Zorvane.app"));
        QCOMPARE(bundle.identifier(), u"a"_s);
        QCOMPARE(bundle.shortVersion(), u"3"_s);
        QCOMPARE(bundle.buildVersion(), std::nullopt);
        QCOMPARE(entitlements.applicationGroups(), QStringList());

        QFile::remove(m_folder->filePath(u"system.json"_s));
        QCOMPARE(bundle.location(), std::filesystem::path("/Applications/Zorvane.app"));
        QCOMPARE(
            entitlements.applicationGroups(), QStringList{u"group.dev.kestrelworks.Zorvane"_s});
    }

    void aDamagedFileIsReportedOnceForEachWriting()
    {
        const auto system = m_folder->system();
        const QRegularExpression report(u"system\\.json holds no JSON object"_s);
        m_folder->behave("{");
        QTest::ignoreMessage(QtWarningMsg, report);
        QCOMPARE(system->behaviour(), standardBehaviour());
        QCOMPARE(system->behaviour(), standardBehaviour());

        m_folder->behave("[ ]");
        QTest::ignoreMessage(QtWarningMsg, report);
        QCOMPARE(system->behaviour(), standardBehaviour());
        QCOMPARE(m_folder->read(u"system.json"_s), "[ ]");
    }

    void somethingElseInTheFilesPlaceIsReportedAndReadAsAbsent()
    {
        QVERIFY(QDir().mkdir(m_folder->filePath(u"system.json"_s)));
        QTest::ignoreMessage(
            QtWarningMsg, QRegularExpression(u"system\\.json cannot be read.*regular file"_s));
        QCOMPARE(m_folder->system()->behaviour(), standardBehaviour());
    }

    void aFaultIsUsedUpAfterItsTimes()
    {
        const auto system = m_folder->system();
        m_folder->behave(
            "{'faults': [ "
            "{'operation': 'save', 'code': 5, 'times': 2}, {'operation': 'load', 'code': 7}, "
            "{'operation': 'save', 'code': 6, 'times': 1}]}");
        QCOMPARE(system->takeFault(Operation::Save).value().code, 5);
        QCOMPARE(system->takeFault(Operation::Save).value().code, 5);
        QCOMPARE(system->takeFault(Operation::Save).value().code, 6);
        QCOMPARE(system->takeFault(Operation::Save), std::nullopt);
        QCOMPARE(system->takeFault(Operation::Activate), std::nullopt);
        for (int i = 0; i < 10; ++i)
            QCOMPARE(system->takeFault(Operation::Load).value().code, 7);
    }

    void faultsAreCountedAnewWhenTheFileIsWritten()
    {
        const auto system = m_folder->system();
        m_folder->behave("{'faults': [{'operation': 'save', 'times': 1}]}");
        QVERIFY(system->takeFault(Operation::Save));
        QVERIFY(!system->takeFault(Operation::Save));

        m_folder->behave("{'faults': [{'operation': 'save', 'times': 1}] }");
        QVERIFY(system->takeFault(Operation::Save));
        QVERIFY(!system->takeFault(Operation::Save));
    }

    void aFaultOfNoTimesNeverHappens()
    {
        m_folder->behave("{'faults': [{'operation': 'load', 'times': 0}]}");
        QVERIFY(!m_folder->system()->takeFault(Operation::Load));
    }

private:
    std::unique_ptr<StateFolder> m_folder;
};

QTEST_GUILESS_MAIN(TestSimulatedSystem)
#include "tst_simulated_system.moc"
