#include "answer.h"
#include "https/https_server.h"
#include "https/test_authority.h"
#include "own_platform.h"

#include <QElapsedTimer>
#include <QTcpServer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;

/** What every system's fetcher refuses, and how it answers. What is taken from a server that can be
 * trusted is tested where a test can have one trusted. */
class TestManifestFetcherContract : public QObject
{
    Q_OBJECT

private:
    [[nodiscard]] static ManifestRequest requestFor(const QUrl &address)
    {
        return {.address = address,
            .accept = "application/json",
            .longestBody = 65536,
            .idleTimeout = 5s,
            .totalTimeout = 10s};
    }

    /** The error that a fetch ends in; nothing if it does not. */
    static std::optional<PlatformError> failure(const ManifestRequest &request)
    {
        OwnPlatform platform;
        const Answer<ManifestFetcher::Result> answer;
        platform->manifestFetcher->fetch(request, answer.receiver());
        if (answer.count() != 0)
            qFatal("The answer came before the call had returned");
        if (!answer.comesOnce())
            qFatal("The fetcher answered %d times", answer.count());
        const auto result = answer.value();
        const auto *const error = std::get_if<PlatformError>(&result);
        return error == nullptr ? std::nullopt : std::optional(*error);
    }

private Q_SLOTS:
    void anAddressThatIsNotSecureIsRefused()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const auto error
            = failure(requestFor(QUrl(u"http://127.0.0.1:%1/"_s.arg(server.serverPort()))));
        QVERIFY(error);
        QVERIFY(!error->domain.isEmpty());
        QVERIFY(error->code != 0);
        QVERIFY(!error->description.isEmpty());
        QVERIFY(!server.hasPendingConnections());
    }

    void aServerThatIsNotTrustedIsRefused()
    {
        const TestAuthority authority;
        HttpsServer server(authority.issue(u"DNS:localhost,IP:127.0.0.1"_s));
        server.answer(u"/manifest"_s, response("{}"));
        QVERIFY(failure(requestFor(server.url(u"/manifest"_s))));
        QVERIFY(server.requests.isEmpty());
    }

    void nobodyListeningIsAnError()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const QUrl address(u"https://127.0.0.1:%1/"_s.arg(server.serverPort()));
        server.close();
        QVERIFY(failure(requestFor(address)));
    }

    void aServerThatSaysNothingIsGivenUp()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        auto request = requestFor(QUrl(u"https://127.0.0.1:%1/"_s.arg(server.serverPort())));
        request.idleTimeout = 1s;
        request.totalTimeout = 2s;
        QElapsedTimer clock;
        clock.start();
        QVERIFY(failure(request));
        QVERIFY(clock.elapsed() < 5000);
        QVERIFY(server.hasPendingConnections());
    }

    void nothingIsAnsweredOnceTheFetcherIsGone()
    {
        OwnPlatform platform;
        const Answer<ManifestFetcher::Result> answer;
        platform->manifestFetcher->fetch(
            requestFor(QUrl(u"http://127.0.0.1:1/"_s)), answer.receiver());
        platform->manifestFetcher.reset();
        QTest::qWait(100);
        QCOMPARE(answer.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestManifestFetcherContract)
#include "tst_manifest_fetcher_contract.moc"
