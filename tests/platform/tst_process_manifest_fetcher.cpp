// The fetcher with the real program against a real server on loopback, and with worse programs.

#include "platform/fetching_process/process_manifest_fetcher.h"

#include "fetcher_fixture.h"

#include <cerrno>
#include <csignal>
#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;
using fetching_process::ProcessManifestFetcher;

namespace
{

const QString realProgram = QStringLiteral(ZORVANE_FETCH_MANIFEST);
/** The same, but that it trusts the test's server. */
const QString trustingProgram = QStringLiteral(TRUSTING_FETCH_PROGRAM);

/** A server that takes a connection and says nothing. */
class SilentServer final : public QTcpServer
{
public:
    SilentServer()
    {
        if (!listen(QHostAddress::LocalHost))
            qFatal("%s", qPrintable(errorString()));
    }

    [[nodiscard]] QUrl url() const { return QUrl(u"https://127.0.0.1:%1/"_s.arg(serverPort())); }

    /** The other end of it; none if nobody comes. */
    QTcpSocket *caller()
    {
        (void)QTest::qWaitFor([this] { return hasPendingConnections(); }, 30'000);
        return nextPendingConnection();
    }
};

} // namespace

class TestProcessManifestFetcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(m_folder.filePath(u"authority.crt"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write(m_f.authority.certificate().toPem()) > 0);
        qputenv("AUTHORITY", file.fileName().toUtf8());
    }

    void init()
    {
        m_f.restart();
        use(trustingProgram);
    }

    void asksAsItIsTold()
    {
        m_f.request.address = m_f.server->url(u"/a%20b/c.json?x=%26&y=$HOME;'"_s);
        m_f.request.accept = "text/plain, */*;q=0.1";
        (void)m_f.fetch();
        QCOMPARE(m_f.server->requests.size(), 1);
        const QByteArray request = m_f.server->requests.constFirst();
        QVERIFY(request.startsWith("GET /a%20b/c.json?x=%26&y=$HOME;' HTTP/1.1\r\n"));
        QVERIFY(request.contains("\r\nAccept: text/plain, */*;q=0.1\r\n"));
    }

    void deliversEveryStatusWithItsBody_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {200, 299, 300, 400, 404, 503})
            QTest::addRow("%d", status) << status;
    }

    void deliversEveryStatusWithItsBody()
    {
        QFETCH(int, status);
        const QByteArray body("\n{}\0\xff\n", 6);
        m_f.server->answer(u"/manifest"_s, response(body, status));
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QCOMPARE(answer->status, status);
        QCOMPARE(answer->body, body);
    }

    void takesOneByteMoreThanTheLongestBody_data()
    {
        QTest::addColumn<qsizetype>("sent");
        QTest::addColumn<qsizetype>("taken");
        constexpr qsizetype limit = FetcherFixture::limit;
        QTest::newRow("as long as may be") << limit << limit;
        QTest::newRow("a byte too long") << limit + 1 << limit + 1;
        QTest::newRow("far too long") << 20 * limit << limit + 1;
    }

    void takesOneByteMoreThanTheLongestBody()
    {
        QFETCH(qsizetype, sent);
        QFETCH(qsizetype, taken);
        const QByteArray body = sampleBody(sent);
        m_f.server->answer(u"/manifest"_s, response(body));
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QVERIFY(answer->body == body.first(taken));
    }

    void followsARedirect()
    {
        m_f.server->redirect(u"/manifest"_s, 302, u"/there"_s);
        m_f.server->answer(u"/there"_s, response("body"));
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QCOMPARE(answer->status, 200);
        QCOMPARE(answer->body, "body");
    }

    void bothTimeoutsAreThoseOfTheRequest_data()
    {
        QTest::addColumn<int>("idle");
        QTest::addColumn<int>("total");
        QTest::newRow("idle") << 300 << 20'000;
        QTest::newRow("total") << 20'000 << 300;
    }

    void bothTimeoutsAreThoseOfTheRequest()
    {
        QFETCH(int, idle);
        QFETCH(int, total);
        SilentServer server;
        m_f.request.address = server.url();
        m_f.request.idleTimeout = std::chrono::milliseconds(idle);
        m_f.request.totalTimeout = std::chrono::milliseconds(total);
        const QElapsedTimer clock = startedClock();
        QCOMPARE(m_f.failure(), QNetworkReply::TimeoutError);
        QVERIFY(clock.elapsed() < 15'000);
    }

    void errorsAreThoseOfTheExchange_data()
    {
        QTest::addColumn<QUrl>("address");
        QTest::addColumn<int>("code");
        QTest::newRow("plain HTTP")
            << QUrl(u"http://localhost:1/"_s) << int(QNetworkReply::ProtocolUnknownError);
        QTest::newRow("nobody listens")
            << QUrl(u"https://localhost:1/"_s) << int(QNetworkReply::ConnectionRefusedError);
        QTest::newRow("no server to trust")
            << QUrl() << int(QNetworkReply::SslHandshakeFailedError);
    }

    void errorsAreThoseOfTheExchange()
    {
        QFETCH(QUrl, address);
        QFETCH(int, code);
        use(realProgram);
        m_f.request.address = address.isEmpty() ? m_f.server->url(u"/manifest"_s) : address;
        const PlatformError error = failure();
        QCOMPARE(error.domain, u"QNetworkReply"_s);
        QCOMPARE(error.code, code);
        QVERIFY(!error.description.isEmpty());
        QVERIFY(m_f.server->requests.isEmpty());
    }

    void severalAtOnceAreAnsweredEach()
    {
        QList<QByteArray> bodies;
        for (const QString &path : {u"/1"_s, u"/2"_s, u"/3"_s}) {
            m_f.server->answer(path, response(path.toUtf8()));
            m_f.request.address = m_f.server->url(path);
            m_f.fetcher->fetch(m_f.request, [&](const auto &result) {
                bodies.append(std::get<ManifestResponse>(result).body);
            });
        }
        QVERIFY(bodies.isEmpty());
        QTRY_COMPARE_WITH_TIMEOUT(bodies.size(), 3, 30'000);
        std::ranges::sort(bodies);
        QCOMPARE(bodies, (QList<QByteArray>{"/1", "/2", "/3"}));
    }

    void aProgramThatIsNotThereIsAnError()
    {
        for (const QString &program : {u"/nowhere/at/all"_s, u"zorvane-of-no-path"_s, QString()}) {
            use(program);
            const PlatformError error = failure();
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
        use(written(script));
        const PlatformError error = failure();
        QCOMPARE(error.domain, u"FetchingProcess"_s);
        QCOMPARE(error.code, problem);
        QVERIFY(!error.description.isEmpty());
    }

    void aProgramThatSaysMoreAndMoreIsEnded()
    {
        use(written("echo $$ >" + pidFile() + "\nprintf 'answer 200\\n'; exec cat /dev/zero"));
        QCOMPARE(failure().code, ProcessManifestFetcher::NotUnderstood);
        QTRY_VERIFY(hasEnded());
    }

    void aProgramThatDoesNotEndIsEnded()
    {
        use(written("echo $$ >" + pidFile() + "\nprintf 'answer 200\\n{}'; exec sleep 1000"));
        m_f.request.totalTimeout = 100ms;
        QCOMPARE(failure().code, ProcessManifestFetcher::NotEnded);
        QTRY_VERIFY(hasEnded());
    }

    void answersOnceAndNotAtAllOnceItIsGone()
    {
        m_f.server->answer(u"/manifest"_s, response("body"));
        int answers = 0;
        m_f.fetcher->fetch(m_f.request, [&](const auto &) { ++answers; });
        QCOMPARE(answers, 0);
        QTRY_COMPARE_WITH_TIMEOUT(answers, 1, 30'000);
        SilentServer server;
        m_f.request.address = server.url();
        m_f.fetcher->fetch(m_f.request, [&](const auto &) { ++answers; });
        const std::unique_ptr<QTcpSocket> caller(server.caller());
        QVERIFY(caller);
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_f.fetcher.reset();
        QTRY_COMPARE(caller->state(), QTcpSocket::UnconnectedState);
        QTest::qWait(50);
        QCOMPARE(answers, 1);
    }

    void anAnswerMayBeTheEndOfTheFetcher()
    {
        for (const QString &program : {realProgram, u"/nowhere/at/all"_s}) {
            use(program);
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
        const std::unique_ptr<QTcpSocket> caller(server.caller());
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
    void use(const QString &program)
    {
        m_f.fetcher = std::make_unique<ProcessManifestFetcher>(program);
    }

    PlatformError failure()
    {
        const auto result = m_f.fetch();
        const auto *const error = std::get_if<PlatformError>(&result);
        return error == nullptr ? PlatformError() : *error;
    }

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
    FetcherFixture m_f;
};

QTEST_GUILESS_MAIN(TestProcessManifestFetcher)
#include "tst_process_manifest_fetcher.moc"
