// The fetcher against a real server on loopback, well-behaved and otherwise.

#include "fakes/fake_scheduler.h"
#include "fetcher_fixture.h"

#include <QTcpServer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;

class TestQtManifestFetcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_f.restart(); }

    void asksAsItIsToldAndPastEveryCache()
    {
        m_f.server->answer(u"/manifest"_s, response({}, 200, "Cache-Control: max-age=3600\r\n"));
        m_f.fetch();
        m_f.fetch();
        QCOMPARE(m_f.server->requests.size(), 2);
        for (const QByteArray &request : m_f.server->requests) {
            QVERIFY(request.startsWith("GET /manifest HTTP/1.1\r\n"));
            QVERIFY(request.contains("\r\nAccept: application/json\r\n"));
            QVERIFY(request.contains("\r\nCache-Control: no-cache\r\n"));
        }
    }

    void deliversEveryStatusWithItsBody_data()
    {
        QTest::addColumn<int>("status");
        for (const int status :
            {200, 201, 299, 300, 304, 400, 401, 403, 404, 407, 451, 500, 503, 599})
            QTest::addRow("%d", status) << status;
    }

    void deliversEveryStatusWithItsBody()
    {
        QFETCH(int, status);
        const QByteArray body = status == 304 ? QByteArray() : QByteArray("body");
        m_f.server->answer(u"/manifest"_s, response(body, status));
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QCOMPARE(answer->status, status);
        QCOMPARE(answer->body, body);
    }

    void speaksNothingButHttp1()
    {
        QSslConfiguration identity = m_f.identity;
        identity.setAllowedNextProtocols(
            {QSslConfiguration::ALPNProtocolHTTP2, QSslConfiguration::NextProtocolHttp1_1});
        HttpsServer server(identity);
        std::optional<QByteArray> agreed;
        server.handle(u"/manifest"_s, [&](QSslSocket &socket) {
            agreed = socket.sslConfiguration().nextNegotiatedProtocol();
            socket.write(response("body"));
        });
        m_f.request.address = server.url(u"/manifest"_s);
        QVERIFY(m_f.fetched());
        QVERIFY(agreed);
        QVERIFY(*agreed != QSslConfiguration::ALPNProtocolHTTP2);
    }

    void failsWithoutProgress_data()
    {
        QTest::addColumn<QByteArray>("beginning");
        QTest::newRow("before the head") << QByteArray();
        QTest::newRow("in the head") << QByteArray("HTTP/1.1 200 OK\r\nContent-");
        QTest::newRow("before the body")
            << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n");
        QTest::newRow("in the body")
            << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nbody");
    }

    void failsWithoutProgress()
    {
        QFETCH(QByteArray, beginning);
        m_f.server->handle(
            u"/manifest"_s, [beginning](QSslSocket &socket) { socket.write(beginning); });
        m_f.request.idleTimeout = 300ms;
        QCOMPARE(m_f.failure(), QNetworkReply::TimeoutError);
    }

    void failsWithoutProgressInTheHandshake()
    {
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        m_f.request.address = QUrl(u"https://localhost:%1/"_s.arg(silent.serverPort()));
        m_f.request.idleTimeout = 300ms;
        QCOMPARE(m_f.failure(), QNetworkReply::TimeoutError);
    }

    void progressKeepsTheExchangeAlive()
    {
        m_f.server->handle(u"/manifest"_s, [](QSslSocket &socket) {
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n");
            repeat(socket, 150, [](QSslSocket &each) { each.write("."); });
        });
        m_f.request.idleTimeout = 1s;
        const QElapsedTimer clock = startedClock();
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QCOMPARE(answer->body, "........");
        QVERIFY(clock.elapsed() > 1000);
    }

    void aDrippingServerHoldsNothingOpen()
    {
        m_f.server->handle(u"/manifest"_s, [](QSslSocket &socket) {
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: 10000\r\n\r\n");
            repeat(socket, 50, [](QSslSocket &each) { each.write("."); });
        });
        m_f.request.idleTimeout = 5s;
        m_f.request.totalTimeout = 700ms;
        const QElapsedTimer clock = startedClock();
        QCOMPARE(m_f.failure(), QNetworkReply::TimeoutError);
        QVERIFY(clock.elapsed() > 500);
    }

    void endsInTimeEvenIfNoWorkerIsEverFree()
    {
        FakeScheduler busy;
        qt_network::QtManifestFetcher fetcher(busy, {m_f.authority.certificate()});
        m_f.request.totalTimeout = 200ms;
        QList<ManifestFetcher::Result> answers;
        fetcher.fetch(m_f.request, [&](const auto &answer) { answers.append(answer); });
        QVERIFY(answers.isEmpty());
        QTRY_COMPARE(answers.size(), 1);
        QCOMPARE(std::get<PlatformError>(answers.constFirst()).code, QNetworkReply::TimeoutError);
        busy.settle();
        QTest::qWait(50);
        QCOMPARE(answers.size(), 1);
        QVERIFY(m_f.server->requests.isEmpty());
    }

    void failsWhenTheAnswerIsCutOff_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("in the head") << QByteArray("HTTP/1.1 200 OK\r\nContent-Le");
        QTest::newRow("in the body")
            << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nbody");
        QTest::newRow("between chunks")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunked("some text");
        QTest::newRow("not packed at all")
            << response("no gzip at all", 200, "Content-Encoding: gzip\r\n");
        QTest::newRow("no HTTP") << QByteArray("220 ready when you are\r\n\r\n");
    }

    void failsWhenTheAnswerIsCutOff()
    {
        QFETCH(QByteArray, answer);
        m_f.server->answer(u"/manifest"_s, answer);
        QVERIFY(m_f.failure() != QNetworkReply::NoError);
    }

    void refusesAWrongCertificate_data()
    {
        QTest::addColumn<QSslConfiguration>("identity");
        QTest::newRow("another host") << m_f.authority.issue(u"DNS:other.example"_s);
        QTest::newRow("expired") << m_f.authority.issue(
            u"DNS:localhost"_s, TestAuthority::Validity::Expired);
        QTest::newRow("an unknown authority") << TestAuthority().issue(u"DNS:localhost"_s);
    }

    void refusesAWrongCertificate()
    {
        QFETCH(QSslConfiguration, identity);
        HttpsServer server(identity);
        server.answer(u"/manifest"_s, response("body"));
        m_f.request.address = server.url(u"/manifest"_s);
        QCOMPARE(m_f.failure(), QNetworkReply::SslHandshakeFailedError);
        QVERIFY(server.requests.isEmpty());
    }

    void trustsOnlyTheSystemUnlessToldOtherwise()
    {
        m_f.fetcher = std::make_unique<qt_network::QtManifestFetcher>(m_f.scheduler);
        QCOMPARE(m_f.failure(), QNetworkReply::SslHandshakeFailedError);
        QVERIFY(m_f.server->requests.isEmpty());
    }

    void asksNobodyWithoutHttps()
    {
        QTcpServer plain;
        QVERIFY(plain.listen(QHostAddress::LocalHost));
        m_f.request.address = QUrl(u"http://localhost:%1/"_s.arg(plain.serverPort()));
        QCOMPARE(m_f.failure(), QNetworkReply::ProtocolUnknownError);
        QVERIFY(!plain.waitForNewConnection(100));
    }

    void failsWhenNobodyListens()
    {
        const QUrl address = m_f.server->url(u"/manifest"_s);
        m_f.server.reset();
        m_f.request.address = address;
        QCOMPARE(m_f.failure(), QNetworkReply::ConnectionRefusedError);
    }

    void answersOnceAndNotAtAllOnceItIsGone()
    {
        m_f.server->answer(u"/manifest"_s, response("body"));
        int answers = 0;
        m_f.fetcher->fetch(m_f.request, [&](const auto &) { ++answers; });
        QCOMPARE(answers, 0);
        QTRY_COMPARE(answers, 1);
        m_f.fetcher->fetch(m_f.request, [&](const auto &) { ++answers; });
        m_f.fetcher.reset();
        QTest::qWait(50);
        QCOMPARE(answers, 1);
    }

private:
    FetcherFixture m_f;
};

QTEST_GUILESS_MAIN(TestQtManifestFetcher)
#include "tst_qt_manifest_fetcher.moc"
