// The fetcher with the real program against a real server on loopback.

#include "process_fixture.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;

namespace
{

const QString realProgram = QStringLiteral(ZORVANE_FETCH_MANIFEST);
/** The same, but that it trusts the test's server. */
const QString trustingProgram = QStringLiteral(TRUSTING_FETCH_PROGRAM);

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
        m_f.use(trustingProgram);
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
        m_f.use(realProgram);
        m_f.request.address = address.isEmpty() ? m_f.server->url(u"/manifest"_s) : address;
        const PlatformError error = m_f.error();
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
        const auto caller = server.caller();
        QVERIFY(caller);
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_f.fetcher.reset();
        QTRY_COMPARE(caller->state(), QTcpSocket::UnconnectedState);
        QTest::qWait(50);
        QCOMPARE(answers, 1);
    }

private:
    const QTemporaryDir m_folder;
    ProcessFixture m_f;
};

QTEST_GUILESS_MAIN(TestProcessManifestFetcher)
#include "tst_process_manifest_fetcher.moc"
