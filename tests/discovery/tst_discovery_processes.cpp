#include "app/app_block_store.h"
#include "app/records/blocked_application_json.h"
#include "app/sample_applications.h"
#include "fakes/fake_platform.h"
#include "platform/simulated/preferences.h"
#include "platform/simulated/property_list.h"
#include "platform/state_folder.h"
#include "sample_processes.h"

#include <QProcess>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
using namespace zorvane::tests;
using inspection::DiscoveredNetworkProcess;

namespace
{

const QString fileName = u"preferences/group.dev.kestrelworks.Zorvane.plist"_s;
constexpr int patience = 100'000; // milliseconds; sanitizers on a busy machine take their time

/** The file's bytes with @p value under the key. */
QByteArray fileWith(const QVariant &value)
{
    return platform::simulated::writePropertyList({{u"discoveredNetworkProcesses.v2"_s, value}});
}

QByteArray fileOf(const QList<DiscoveredNetworkProcess> &processes)
{
    return fileWith(inspection::encodedProcesses(processes));
}

/** As many processes, named after their generation. */
QList<DiscoveredNetworkProcess> generation(
    const QString &name, int count, inspection::ReferenceSeconds seenAt)
{
    QList<DiscoveredNetworkProcess> result;
    for (int i = 0; i < count; ++i) {
        result.append(sampleProcess(name, u"TEAM"_s, seenAt - i));
        result.last().executablePath = u"/Applications/Tool.app/Contents/MacOS/%1%2"_s.arg(
            name, QString::number(i).rightJustified(30, u'0'));
    }
    return result;
}

} // namespace

/** The store on a made-up system, whose shared preferences are real files that others write. */
class TestDiscoveryProcesses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<StateFolder>();
        m_system = std::make_unique<FakePlatform>();
        m_system->ports.suites
            = std::make_unique<platform::simulated::FilePreferencesSuites>(m_folder->system());
        m_system->preferences.values.insert(u"blockedApplications"_s,
            records::encodedApplications({sampleApplication(u"Tool"_s, u"com.example.Tool"_s)}));
        m_store = std::make_unique<app::AppBlockStore>(m_system->ports);
        m_system->scheduler.settle();
    }
    void cleanup() { m_store.reset(); }

    void whatAnotherProgramWritesIsSeenAtTheNextPass()
    {
        write(u"in-place"_s, fileOf({seen(u"helper"_s)}));
        pass();
        QCOMPARE(identifiers(), QStringList{u"helper"_s});
        QCOMPARE(m_store->applications().constFirst().auxiliaryCodeIdentities,
            QList({records::CodeIdentity{u"helper"_s, u"TEAM"_s}}));
    }

    void aFileThatIsReplacedByRenamingIsSeen()
    {
        write(u"replace"_s, fileOf({seen(u"one"_s)}));
        pass();
        write(u"replace"_s, fileOf({seen(u"two"_s)}));
        pass();
        QCOMPARE(identifiers(), QStringList{u"two"_s});
    }

    void aHalfWrittenFileReadsAsNothingUntilItIsWhole()
    {
        const QByteArray file = fileOf(generation(u"helper"_s, 50, now() - 60));
        write(u"half"_s, file);
        pass();
        QCOMPARE(identifiers(), QStringList());
        write(u"in-place"_s, file);
        pass();
        QCOMPARE(identifiers().size(), 50);
        write(u"half"_s, file);
        pass();
        QCOMPARE(identifiers(), QStringList());
    }

    void aDamagedFileReadsAsNothingAndIsLeftAsItIs()
    {
        write(u"in-place"_s, fileOf({seen(u"helper"_s)}));
        pass();
        const auto applications = m_store->applications();
        write(u"in-place"_s, "no property list");
        pass();
        pass();
        QCOMPARE(identifiers(), QStringList());
        QCOMPARE(m_store->applications(), applications);
        QVERIFY(!m_store->alertMessage());
        QCOMPARE(m_folder->read(fileName), "no property list");
    }

    void damagedDataInASoundFileReadsAsNothing()
    {
        const QByteArray data = inspection::encodedProcesses({seen(u"helper"_s)});
        write(u"replace"_s, fileWith(data.first(data.size() / 2)));
        pass();
        QCOMPARE(identifiers(), QStringList());
        write(u"replace"_s, fileWith(data));
        pass();
        QCOMPARE(identifiers(), QStringList{u"helper"_s});
    }

    void aWrongTypeUnderTheKeyReadsAsNothing_data()
    {
        const QByteArray data = inspection::encodedProcesses({seen(u"helper"_s)});
        QTest::addColumn<QVariant>("value");
        QTest::newRow("text") << QVariant(QString::fromUtf8(data));
        QTest::newRow("list") << QVariant(QVariantList{data});
        QTest::newRow("dictionary") << QVariant(QVariantMap{{u"data"_s, data}});
        QTest::newRow("number") << QVariant(qlonglong{1});
        QTest::newRow("date") << QVariant(QDateTime(QDate(2026, 3, 1), QTime(0, 0), Qt::UTC));
        QTest::newRow("truth value") << QVariant(true);
    }

    void aWrongTypeUnderTheKeyReadsAsNothing()
    {
        QFETCH(QVariant, value);
        write(u"replace"_s, fileOf({seen(u"helper"_s)}));
        pass();
        QCOMPARE(identifiers().size(), 1);
        write(u"replace"_s, fileWith(value));
        pass();
        QCOMPARE(identifiers(), QStringList());
    }

    void aListOfTenMegabytesIsRead()
    {
        const auto processes = generation(u"helper"_s, 60'000, now() - 60);
        const QByteArray file = fileOf(processes);
        QVERIFY(file.size() > 10'000'000);
        write(u"replace"_s, file);
        pass();
        QCOMPARE(m_store->discoveredProcesses(), processes);
    }

    void recordsAtAndAroundTheCutOff()
    {
        constexpr double thirtyDays = 2'592'000;
        const auto cutOff = now() + 5 - thirtyDays; // at the pass, which comes five seconds later
        const auto at = [&](const QString &name, double seconds) {
            return sampleProcess(name, u"TEAM"_s, cutOff + seconds);
        };
        write(u"replace"_s,
            fileOf({at(u"a second older"_s, -1), at(u"a moment older"_s, -0.001), at(u"at"_s, 0),
                at(u"a moment younger"_s, 0.001)}));
        pass();
        QCOMPARE(identifiers(), (QStringList{u"a moment younger"_s, u"at"_s}));
        pass();
        QCOMPARE(identifiers(), QStringList());
    }

    void aFileThatIsRemovedReadsAsNothing()
    {
        write(u"replace"_s, fileOf({seen(u"helper"_s)}));
        pass();
        QVERIFY(QFile::remove(m_folder->filePath(fileName)));
        pass();
        QCOMPARE(identifiers(), QStringList());
    }

    void everyPassUnderALiveWriterSeesOneWholeListOrNone()
    {
        m_folder->write(u"one"_s, fileOf(generation(u"one"_s, 300, now() - 60)));
        m_folder->write(u"other"_s, fileOf(generation(u"other"_s, 500, now() - 60)));
        QProcess writer;
        start(writer,
            {m_folder->filePath(fileName), u"ever"_s, m_folder->filePath(u"one"_s),
                m_folder->filePath(u"other"_s)});
        QVERIFY(writer.waitForReadyRead(patience));
        int whole = 0;
        for (int i = 0; i < 2000 && (whole < 20 || i < 300); ++i) {
            pass();
            const QStringList found = identifiers();
            QVERIFY(found.isEmpty() || found.size() == 300 || found.size() == 500);
            if (found.isEmpty())
                continue;
            QCOMPARE(found.count(found.size() == 300 ? u"one"_s : u"other"_s), found.size());
            ++whole;
        }
        writer.kill();
        QVERIFY(writer.waitForFinished(patience));
        QVERIFY(whole >= 20);
    }

private:
    [[nodiscard]] inspection::ReferenceSeconds now() const
    {
        return inspection::referenceSeconds(m_system->scheduler.now());
    }

    [[nodiscard]] DiscoveredNetworkProcess seen(const QString &identifier) const
    {
        return generation(identifier, 1,
            inspection::referenceSeconds(QDateTime(QDate(2026, 3, 1), QTime(11, 59), Qt::UTC)))
            .constFirst();
    }

    [[nodiscard]] QStringList identifiers() const
    {
        QStringList result;
        for (const auto &process : m_store->discoveredProcesses())
            result.append(process.signingIdentifier);
        return result;
    }

    void pass() const { m_system->scheduler.advance(5s); }

    static void start(QProcess &process, const QStringList &arguments)
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(OBSERVATION_WRITER), arguments);
        QVERIFY(process.waitForStarted());
    }

    void write(const QString &mode, const QByteArray &bytes) const
    {
        QProcess writer;
        start(writer, {m_folder->filePath(fileName), mode});
        QCOMPARE(writer.write(bytes), bytes.size());
        writer.closeWriteChannel();
        QVERIFY(writer.waitForFinished(patience));
        QCOMPARE(writer.exitCode(), 0);
    }

    std::unique_ptr<StateFolder> m_folder;
    std::unique_ptr<FakePlatform> m_system;
    std::unique_ptr<app::AppBlockStore> m_store;
};

QTEST_GUILESS_MAIN(TestDiscoveryProcesses)
#include "tst_discovery_processes.moc"
