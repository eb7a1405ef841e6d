#include "platform/simulated/property_list.h"
#include "state_folder.h"
#include "tests/long/times.h"

#include <QProcess>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;
using zorvane::tests::StateFolder;
using zorvane::tests::timesIfLong;

namespace
{

const QString fileName = u"preferences/dev.kestrelworks.Zorvane.plist"_s;

constexpr int patience = 200'000; // milliseconds; sanitizers on a busy machine take their time

} // namespace

class TestPreferencesProcesses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoProgramsWritingAtOnceLoseNothing()
    {
        const int count = timesIfLong(200);
        const StateFolder folder;
        QProcess one;
        QProcess other;
        start(one, folder, {u"one"_s, QString::number(count)});
        start(other, folder, {u"other"_s, QString::number(count)});
        for (QProcess *process : {&one, &other}) {
            QVERIFY(process->waitForFinished(patience));
            QCOMPARE(process->exitCode(), 0);
        }
        const QVariantMap stored = readPropertyList(folder.read(fileName)).toMap();
        QCOMPARE(stored.size(), 100);
        for (int i = 0; i < 50; ++i) {
            const QString last = QString::number(count - 50 + i);
            QCOMPARE(stored.value(u"one%1"_s.arg(i)).toString(), last);
            QCOMPARE(stored.value(u"other%1"_s.arg(i)).toString(), last);
        }
    }

    void aProgramKilledWhileItWritesLeavesTheOldOrTheNewValue()
    {
        constexpr int rounds = 25;
        const StateFolder folder;
        writeOneKey(folder, u"kept"_s);
        for (int round = 0; round < rounds; ++round) {
            QProcess writer;
            start(writer, folder, {});
            QVERIFY(writer.waitForReadyRead(patience)); // the first value is there
            QTest::qSleep(round % 10); // and the kill hits some moment of a later write
            writer.kill();
            QVERIFY(writer.waitForFinished());

            const QVariantMap stored = readPropertyList(folder.read(fileName)).toMap();
            const QByteArray list = stored.value(u"list"_s).toByteArray();
            QCOMPARE(list.size(), 300'000);
            QCOMPARE(list.count(list.front()), list.size());
            QVERIFY(stored.contains(u"kept0"_s));
        }
        // Neither a lock nor a half-written file is left in the way.
        writeOneKey(folder, u"after"_s);
        QVERIFY(readPropertyList(folder.read(fileName)).toMap().contains(u"after0"_s));
        const QStringList files = QDir(folder.filePath(u"preferences"_s)).entryList(QDir::Files);
        QCOMPARE(files, QStringList{u"dev.kestrelworks.Zorvane.plist"_s});
    }

private:
    static void writeOneKey(const StateFolder &folder, const QString &prefix)
    {
        QProcess writer;
        start(writer, folder, {prefix, u"1"_s});
        QVERIFY(writer.waitForFinished(patience));
        QCOMPARE(writer.exitCode(), 0);
    }

    static void start(QProcess &process, const StateFolder &folder, const QStringList &arguments)
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(PREFERENCES_WRITER),
            QStringList{folder.filePath(QString())} + arguments);
        QVERIFY(process.waitForStarted());
    }
};

QTEST_GUILESS_MAIN(TestPreferencesProcesses)
#include "tst_preferences_processes.moc"
