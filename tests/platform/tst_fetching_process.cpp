// Programs that are no good at fetching, and the end of good ones.

#include "process_fixture.h"

#include <cerrno>
#include <csignal>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;
using fetching_process::ProcessManifestFetcher;

namespace
{

const QString realProgram = QStringLiteral(ZORVANE_FETCH_MANIFEST);

} // namespace

class TestFetchingProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_f.restart(); }

    void aProgramThatIsNotThereIsAnError()
    {
        for (const QString &program : {u"/nowhere/at/all"_s, u"zorvane-of-no-path"_s, QString()}) {
            m_f.use(program);
            const PlatformError error = m_f.error();
            QCOMPARE(error.code, ProcessManifestFetcher::NotStarted);
            QVERIFY(!error.description.isEmpty());
        }
    }

    void aProgramThatFailsOrTalksNonsenseIsAnError_data()
    {
        using enum ProcessManifestFetcher::Problem;
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<int>("problem");
        QTest::newRow("it fails") << QByteArray("exit 1") << int(Failed);
        QTest::newRow("it fails after its answer")
            << QByteArray("printf 'answer 200\\n{}'; exit 1") << int(Failed);
        QTest::newRow("it is killed in its answer")
            << QByteArray("printf 'answer 200\\n{'; kill -KILL $$") << int(Failed);
        QTest::newRow("it says nothing") << QByteArray("exit 0") << int(NotUnderstood);
        QTest::newRow("it says half a line")
            << QByteArray("printf 'answer 200'") << int(NotUnderstood);
        QTest::newRow("it says something else") << QByteArray("echo hello") << int(NotUnderstood);
        QTest::newRow("its body is too long")
            << QByteArray("printf 'answer 200\\n%65538s' x") << int(NotUnderstood);
        QTest::newRow("it says far too much")
            << QByteArray("printf 'answer 200\\n%200000s' x") << int(NotUnderstood);
    }

    void aProgramThatFailsOrTalksNonsenseIsAnError()
    {
        QFETCH(QByteArray, script);
        QFETCH(int, problem);
        m_f.use(written(script));
        const PlatformError error = m_f.error();
        QCOMPARE(error.domain, u"FetchingProcess"_s);
        QCOMPARE(error.code, problem);
        QVERIFY(!error.description.isEmpty());
    }

    void noProgramIsStartedInTheMidstOfALaunch()
    {
        QElapsedTimer time;
        time.start();
        m_f.use(u"/nowhere/at/all"_s, 300ms);
        QCOMPARE(m_f.error().code, ProcessManifestFetcher::NotStarted);
        QVERIFY(time.elapsed() >= 250);
    }

    void aProgramThatSaysMoreAndMoreIsEnded()
    {
        m_f.use(written("echo $$ >" + pidFile() + "\nprintf 'answer 200\\n'; exec cat /dev/zero"));
        QCOMPARE(m_f.error().code, ProcessManifestFetcher::NotUnderstood);
        QTRY_VERIFY(hasEnded());
    }

    void aProgramThatDoesNotEndIsEnded()
    {
        m_f.use(written("echo $$ >" + pidFile() + "\nprintf 'answer 200\\n{}'; exec sleep 1000"));
        m_f.request.totalTimeout = 100ms;
        QCOMPARE(m_f.error().code, ProcessManifestFetcher::NotEnded);
        QTRY_VERIFY(hasEnded());
    }

    void anAnswerMayBeTheEndOfTheFetcher()
    {
        for (const QString &program : {realProgram, u"/nowhere/at/all"_s}) {
            m_f.use(program);
            m_f.request.address = QUrl(u"http://localhost/"_s);
            m_f.fetcher->fetch(m_f.request, [&](const auto &) { m_f.fetcher.reset(); });
            QTRY_VERIFY_WITH_TIMEOUT(!m_f.fetcher, 30'000);
        }
    }

    void theProgramEndsWithTheOneThatStartedIt()
    {
        SilentServer server;
        QProcess starter;
        starter.start(QStringLiteral(FETCH_STARTER), {realProgram, server.url().toString()});
        const auto caller = server.caller();
        QVERIFY(caller);
        QCOMPARE(starter.state(), QProcess::Running);
        starter.kill();
        QVERIFY(starter.waitForFinished());
        QTRY_COMPARE_WITH_TIMEOUT(caller->state(), QTcpSocket::UnconnectedState, 30'000);
    }

    void itsStandardErrorIsThatOfTheOneThatStartedIt()
    {
        QProcess starter;
        starter.start(
            QStringLiteral(FETCH_STARTER), {written("echo complaint >&2"), u"https://a/"_s});
        QVERIFY(starter.waitForFinished());
        QCOMPARE(starter.readAllStandardError(), "complaint\n");
        QCOMPARE(starter.readAllStandardOutput(), QByteArray());
    }

    void theProgramRefusesWrongArguments()
    {
        QProcess program;
        program.start(realProgram, {u"https://localhost/"_s});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 2);
        QVERIFY(program.readAllStandardError().startsWith("Arguments: ADDRESS "));
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
    }

private:
    /** The path of a program that does what @p script says. */
    [[nodiscard]] QString written(const QByteArray &script) const
    {
        QFile file(m_folder.filePath(u"program"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + script) < 0
            || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
            qFatal("%s cannot be written", qPrintable(file.fileName()));
        return file.fileName();
    }

    [[nodiscard]] QByteArray pidFile() const { return m_folder.filePath(u"pid"_s).toUtf8(); }

    /** Whether the process that wrote its number there is gone. */
    [[nodiscard]] bool hasEnded() const
    {
        QFile file(m_folder.filePath(u"pid"_s));
        const pid_t process = file.open(QIODevice::ReadOnly) ? file.readAll().toInt() : 0;
        return process > 0 && ::kill(process, 0) != 0 && errno == ESRCH;
    }

    const QTemporaryDir m_folder;
    ProcessFixture m_f;
};

QTEST_GUILESS_MAIN(TestFetchingProcess)
#include "tst_fetching_process.moc"
