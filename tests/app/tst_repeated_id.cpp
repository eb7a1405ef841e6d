#include "app/app_block_store.h"
#include "app/records/blocked_application_json.h"
#include "fakes/fake_platform.h"
#include "sample_applications.h"

#include <csignal>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;

namespace
{

/** Lets a store load and inspect two stale records with one id. */
void inspectTwoRecordsWithOneId()
{
    FakePlatform system;
    auto first = sampleApplication(u"A"_s, u"com.example.A"_s);
    auto second = sampleApplication(u"B"_s, u"com.example.B"_s);
    second.id = first.id;
    for (auto *stale : {&first, &second}) {
        stale->inspectionVersion = 4;
        system.addBundle(stale->path, stale->signingIdentifier);
    }
    system.preferences.values.insert(
        u"blockedApplications"_s, records::encodedApplications({first, second}));
    const app::AppBlockStore store(system.ports);
    system.scheduler.settle();
}

} // namespace

class TestRepeatedId : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stopsTheProgramAndSaysWhy()
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {u"--as-child"_s});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        QVERIFY(child.readAllStandardError().contains(
            "zorvane: two blocked applications have the same id"));
    }
};

int main(int argc, char *argv[])
{
    if (argc > 1 && QByteArray(argv[1]) == "--as-child") {
        inspectTwoRecordsWithOneId();
        return 0;
    }
    QCoreApplication application(argc, argv);
    TestRepeatedId test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_repeated_id.moc"
