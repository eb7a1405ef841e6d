// The fetcher against a real server on loopback, well-behaved and otherwise.

#include "https/https_server.h"
#include "https/test_authority.h"
#include "platform/qt_network/qt_manifest_fetcher.h"

#include <memory>
#include <QElapsedTimer>
#include <QFile>
#include <QNetworkReply>
#include <QProcess>
#include <QTcpServer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;
using qt_network::QtManifestFetcher;

namespace
{

constexpr qsizetype limit = 65536;

/** @p bytes as a gzip file holds them. */
QByteArray gzip(const QByteArray &bytes)
{
    QProcess process;
    process.start(u"gzip"_s, {u"-c"_s});
    process.write(bytes);
    process.closeWriteChannel();
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("gzip failed");
    return process.readAllStandardOutput();
}

/** An answer whose body is the same in all but the way it travels. */
QByteArray sentAs(const QString &transfer, const QByteArray &body)
{
    if (transfer == "length"_L1)
        return response(body);
    if (transfer == "gzip"_L1)
        return response(gzip(body), 200, "Content-Encoding: gzip\r\n");
    if (transfer == "deflate"_L1)
        return response(qCompress(body).mid(4), 200, "Content-Encoding: deflate\r\n");
    if (transfer == "chunked"_L1)
        return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunked(body)
            + "0\r\n\r\n";
    return "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + body;
}

/** The most memory that this process has had at one time, in bytes. */
qint64 mostMemory()
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("/proc/self/status cannot be read");
    const QByteArray status = file.readAll();
    const QByteArray line = status.mid(status.indexOf("VmHWM:") + 6);
    return line.first(line.indexOf("kB")).trimmed().toLongLong() * 1024;
}

/** Bytes that do not repeat soon. */
QByteArray sampleBody(qsizetype size)
{
    QByteArray result;
    for (int i = 0; result.size() < size; ++i)
        result += QByteArray::number(i * 2654435761u);
    return result.first(size);
}

} // namespace

class TestQtManifestFetcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_authority = std::make_unique<TestAuthority>();
        m_identity = m_authority->issue(u"DNS:localhost,IP:127.0.0.1"_s);
    }

    void init()
    {
        m_server = std::make_unique<HttpsServer>(m_identity);
        m_fetcher = std::make_unique<QtManifestFetcher>(QList{m_authority->certificate()});
        m_request = {.address = m_server->url(u"/manifest"_s),
            .accept = "application/json",
            .longestBody = limit,
            .idleTimeout = 10s,
            .totalTimeout = 20s};
    }

    void cleanup()
    {
        m_fetcher.reset();
        m_server.reset();
    }

    void asksAsItIsToldAndPastEveryCache()
    {
        m_server->answer(u"/manifest"_s, response({}, 200, "Cache-Control: max-age=3600\r\n"));
        fetch();
        fetch();
        QCOMPARE(m_server->requests.size(), 2);
        for (const QByteArray &request : m_server->requests) {
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
        m_server->answer(u"/manifest"_s, response(body, status));
        const auto answer = fetched();
        QVERIFY(answer);
        QCOMPARE(answer->status, status);
        QCOMPARE(answer->body, body);
    }

    void anInformationIsNoAnswer()
    {
        m_server->answer(u"/manifest"_s, "HTTP/1.1 199 Wait\r\n\r\n" + response("body"));
        const auto answer = fetched();
        QVERIFY(!answer || answer->status == 200 || answer->status == 199);
        if (answer && answer->status == 200)
            QCOMPARE(answer->body, "body");
    }

    void readsUpToOneByteBeyondTheLimit_data()
    {
        QTest::addColumn<QString>("transfer");
        QTest::addColumn<qsizetype>("size");
        for (const QString &transfer :
            {u"length"_s, u"chunked"_s, u"until the end"_s, u"gzip"_s, u"deflate"_s}) {
            for (const qsizetype size :
                {qsizetype(0), qsizetype(1), limit - 1, limit, limit + 1, limit + 2, 10 * limit})
                QTest::addRow("%s, %lld bytes", qPrintable(transfer), qlonglong(size))
                    << transfer << size;
        }
    }

    void readsUpToOneByteBeyondTheLimit()
    {
        QFETCH(QString, transfer);
        QFETCH(qsizetype, size);
        const QByteArray body = sampleBody(size);
        m_server->answer(u"/manifest"_s, sentAs(transfer, body));
        const auto answer = fetched();
        QVERIFY(answer);
        QCOMPARE(answer->status, 200);
        QVERIFY(answer->body == body.first(std::min(size, limit + 1)));
    }

    void takesABodyInManyPieces()
    {
        const QByteArray bytes = sentAs(u"chunked"_s, sampleBody(limit));
        m_server->handle(
            u"/manifest"_s, [bytes, sent = std::make_shared<qsizetype>(0)](QSslSocket &socket) {
                repeat(socket, 1, [bytes, sent](QSslSocket &each) {
                    each.write(bytes.mid(*sent, 1500));
                    *sent += 1500;
                });
            });
        const auto answer = fetched();
        QVERIFY(answer);
        QCOMPARE(answer->body, sampleBody(limit));
    }

    void endsABodyThatNeverEnds()
    {
        auto sent = std::make_shared<qint64>(0);
        m_server->handle(u"/manifest"_s, [sent](QSslSocket &socket) {
            socket.write("HTTP/1.1 200 OK\r\n\r\n");
            repeat(socket, 0, [sent](QSslSocket &each) {
                if (each.bytesToWrite() < 65536)
                    *sent += each.write(QByteArray(16384, ' '));
            });
        });
        const auto answer = fetched();
        QVERIFY(answer);
        QCOMPARE(answer->body.size(), limit + 1);
        // What is on its way in buffers comes on top, but no more than that.
        QVERIFY2(*sent < 16 * 1024 * 1024, qPrintable(QString::number(*sent)));
    }

    void unpacksNoMoreThanItMay()
    {
        QProcess packer;
        packer.start(u"sh"_s, {u"-c"_s, u"head -c 200000000 /dev/zero | gzip -1"_s});
        QVERIFY(packer.waitForFinished());
        const QByteArray bomb = packer.readAllStandardOutput();
        QVERIFY(bomb.size() > 100'000);
        m_server->answer(u"/manifest"_s, response(bomb, 200, "Content-Encoding: gzip\r\n"));
        const QElapsedTimer clock = started();
        const qint64 before = mostMemory();
        // Either is right: that it was refused as a whole, or that it was cut off.
        if (const auto answer = fetched())
            QCOMPARE(answer->body.size(), limit + 1);
        QVERIFY(clock.elapsed() < 10'000);
        QVERIFY2(
            mostMemory() - before < 50'000'000, qPrintable(QString::number(mostMemory() - before)));
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
        m_server->handle(
            u"/manifest"_s, [beginning](QSslSocket &socket) { socket.write(beginning); });
        m_request.idleTimeout = 300ms;
        QCOMPARE(failure(), QNetworkReply::TimeoutError);
    }

    void failsWithoutProgressInTheHandshake()
    {
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        m_request.address = QUrl(u"https://localhost:%1/"_s.arg(silent.serverPort()));
        m_request.idleTimeout = 300ms;
        QCOMPARE(failure(), QNetworkReply::TimeoutError);
    }

    void progressKeepsTheExchangeAlive()
    {
        m_server->handle(u"/manifest"_s, [](QSslSocket &socket) {
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n");
            repeat(socket, 150, [](QSslSocket &each) { each.write("."); });
        });
        m_request.idleTimeout = 1s;
        const QElapsedTimer clock = started();
        const auto answer = fetched();
        QVERIFY(answer);
        QCOMPARE(answer->body, "........");
        QVERIFY(clock.elapsed() > 1000);
    }

    void aDrippingServerHoldsNothingOpen()
    {
        m_server->handle(u"/manifest"_s, [](QSslSocket &socket) {
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: 10000\r\n\r\n");
            repeat(socket, 50, [](QSslSocket &each) { each.write("."); });
        });
        m_request.idleTimeout = 5s;
        m_request.totalTimeout = 700ms;
        const QElapsedTimer clock = started();
        QCOMPARE(failure(), QNetworkReply::TimeoutError);
        QVERIFY(clock.elapsed() > 500);
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
        QTest::newRow("no HTTP") << QByteArray("220 ready when you are\r\n\r\n");
    }

    void failsWhenTheAnswerIsCutOff()
    {
        QFETCH(QByteArray, answer);
        m_server->answer(u"/manifest"_s, answer);
        QVERIFY(failure() != QNetworkReply::NoError);
    }

    void followsRedirects_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {301, 302, 303, 307, 308})
            QTest::addRow("%d", status) << status;
    }

    void followsRedirects()
    {
        QFETCH(int, status);
        m_server->redirect(u"/manifest"_s, status, u"/moved"_s);
        m_server->redirect(
            u"/moved"_s, status, m_server->url(u"/there"_s, u"127.0.0.1"_s).toString());
        m_server->answer(u"/there"_s, response("body"));
        const auto answer = fetched();
        QVERIFY(answer);
        QCOMPARE(answer->status, 200);
        QCOMPARE(answer->body, "body");
        QVERIFY(m_server->requests.constLast().startsWith("GET /there "));
        QVERIFY(m_server->requests.constLast().contains("\r\nAccept: application/json\r\n"));
    }

    void neverFollowsToALessSafeScheme()
    {
        QTcpServer plain;
        QVERIFY(plain.listen(QHostAddress::LocalHost));
        m_server->redirect(u"/manifest"_s, 302, u"http://localhost:%1/"_s.arg(plain.serverPort()));
        QCOMPARE(failure(), QNetworkReply::InsecureRedirectError);
        QVERIFY(!plain.waitForNewConnection(100));
    }

    void followsToNoOtherScheme_data()
    {
        QTest::addColumn<QString>("location");
        for (const QString &location : {u"file:///etc/hostname"_s, u"data:text/plain,body"_s,
                 u"ftp://localhost/"_s, u"qrc:/x"_s})
            QTest::addRow("%s", qPrintable(location)) << location;
    }

    void followsToNoOtherScheme()
    {
        QFETCH(QString, location);
        m_server->redirect(u"/manifest"_s, 302, location);
        QVERIFY(failure() != QNetworkReply::NoError);
    }

    void givesUpOnALoop()
    {
        m_server->redirect(u"/manifest"_s, 302, u"/manifest"_s);
        QCOMPARE(failure(), QNetworkReply::TooManyRedirectsError);
        QCOMPARE(m_server->requests.size(), 17);
    }

    void checksTheCertificateBehindARedirect()
    {
        HttpsServer other(m_authority->issue(u"DNS:other.example"_s));
        m_server->redirect(u"/manifest"_s, 302, other.url(u"/"_s).toString());
        QCOMPARE(failure(), QNetworkReply::SslHandshakeFailedError);
        QVERIFY(other.requests.isEmpty());
    }

    void refusesAWrongCertificate_data()
    {
        QTest::addColumn<QSslConfiguration>("identity");
        QTest::newRow("another host") << m_authority->issue(u"DNS:other.example"_s);
        QTest::newRow("expired") << m_authority->issue(
            u"DNS:localhost"_s, TestAuthority::Validity::Expired);
        QTest::newRow("an unknown authority") << TestAuthority().issue(u"DNS:localhost"_s);
    }

    void refusesAWrongCertificate()
    {
        QFETCH(QSslConfiguration, identity);
        HttpsServer server(identity);
        server.answer(u"/manifest"_s, response("body"));
        m_request.address = server.url(u"/manifest"_s);
        QCOMPARE(failure(), QNetworkReply::SslHandshakeFailedError);
        QVERIFY(server.requests.isEmpty());
    }

    void trustsOnlyTheSystemUnlessToldOtherwise()
    {
        m_fetcher = std::make_unique<QtManifestFetcher>();
        QCOMPARE(failure(), QNetworkReply::SslHandshakeFailedError);
        QVERIFY(m_server->requests.isEmpty());
    }

    void asksNobodyWithoutHttps()
    {
        QTcpServer plain;
        QVERIFY(plain.listen(QHostAddress::LocalHost));
        m_request.address = QUrl(u"http://localhost:%1/"_s.arg(plain.serverPort()));
        QCOMPARE(failure(), QNetworkReply::ProtocolUnknownError);
        QVERIFY(!plain.waitForNewConnection(100));
    }

    void failsWhenNobodyListens()
    {
        const QUrl address = m_server->url(u"/manifest"_s);
        m_server.reset();
        m_request.address = address;
        QCOMPARE(failure(), QNetworkReply::ConnectionRefusedError);
    }

    void answersOnceAndNotAtAllOnceItIsGone()
    {
        m_server->answer(u"/manifest"_s, response("body"));
        int answers = 0;
        m_fetcher->fetch(m_request, [&](const auto &) { ++answers; });
        QCOMPARE(answers, 0);
        QTRY_COMPARE(answers, 1);
        m_fetcher->fetch(m_request, [&](const auto &) { ++answers; });
        m_fetcher.reset();
        QTest::qWait(50);
        QCOMPARE(answers, 1);
    }

private:
    static QElapsedTimer started()
    {
        QElapsedTimer clock;
        clock.start();
        return clock;
    }

    ManifestFetcher::Result fetch()
    {
        std::optional<ManifestFetcher::Result> result;
        m_fetcher->fetch(m_request, [&](const auto &answer) { result = answer; });
        if (!QTest::qWaitFor([&] { return result.has_value(); }, 30'000))
            qFatal("The fetcher did not answer");
        return *result;
    }

    std::optional<ManifestResponse> fetched()
    {
        const auto result = fetch();
        if (const auto *const error = std::get_if<PlatformError>(&result)) {
            qWarning("%s", qPrintable(error->description));
            return std::nullopt;
        }
        return std::get<ManifestResponse>(result);
    }

    /** The code of the error that a fetch ends in; NoError if it does not. */
    QNetworkReply::NetworkError failure()
    {
        const auto result = fetch();
        const auto *const error = std::get_if<PlatformError>(&result);
        return error == nullptr ? QNetworkReply::NoError : QNetworkReply::NetworkError(error->code);
    }

    std::unique_ptr<TestAuthority> m_authority;
    QSslConfiguration m_identity;
    std::unique_ptr<HttpsServer> m_server;
    std::unique_ptr<QtManifestFetcher> m_fetcher;
    ManifestRequest m_request;
};

QTEST_GUILESS_MAIN(TestQtManifestFetcher)
#include "tst_qt_manifest_fetcher.moc"
