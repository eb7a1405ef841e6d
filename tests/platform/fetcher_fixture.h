#pragma once

#include "https/https_server.h"
#include "https/test_authority.h"
#include "platform/qt_network/qt_manifest_fetcher.h"
#include "platform/standard_scheduler.h"

#include <memory>
#include <QElapsedTimer>
#include <QNetworkReply>
#include <QTest>

namespace zorvane::tests
{

/** A fetcher and a real server on loopback that it trusts; both are new for each test. */
class FetcherFixture
{
public:
    static constexpr qsizetype limit = 65536;

    void restart()
    {
        using namespace std::chrono_literals;
        fetcher.reset();
        server = std::make_unique<HttpsServer>(identity);
        fetcher = std::make_unique<platform::qt_network::QtManifestFetcher>(
            scheduler, QList{authority.certificate()});
        request = {.address = server->url(QStringLiteral("/manifest")),
            .accept = "application/json",
            .longestBody = limit,
            .idleTimeout = 10s,
            .totalTimeout = 20s};
    }

    platform::ManifestFetcher::Result fetch()
    {
        std::optional<platform::ManifestFetcher::Result> result;
        fetcher->fetch(request, [&](const auto &answer) { result = answer; });
        if (!QTest::qWaitFor([&] { return result.has_value(); }, 30'000))
            qFatal("The fetcher did not answer");
        return *result;
    }

    /** The answer to a fetch, if it does not end in an error. */
    std::optional<platform::ManifestResponse> fetched()
    {
        const auto result = fetch();
        if (const auto *const error = std::get_if<platform::PlatformError>(&result)) {
            qWarning("%s", qPrintable(error->description));
            return std::nullopt;
        }
        return std::get<platform::ManifestResponse>(result);
    }

    /** The code of the error that a fetch ends in; NoError if it does not. */
    QNetworkReply::NetworkError failure()
    {
        const auto result = fetch();
        const auto *const error = std::get_if<platform::PlatformError>(&result);
        return error == nullptr ? QNetworkReply::NoError : QNetworkReply::NetworkError(error->code);
    }

    platform::StandardScheduler scheduler;
    TestAuthority authority;
    const QSslConfiguration identity
        = authority.issue(QStringLiteral("DNS:localhost,IP:127.0.0.1"));
    std::unique_ptr<HttpsServer> server;
    std::unique_ptr<platform::ManifestFetcher> fetcher;
    platform::ManifestRequest request;
};

/** Bytes that do not repeat soon. */
inline QByteArray sampleBody(qsizetype size)
{
    QByteArray result;
    for (int i = 0; result.size() < size; ++i)
        result += QByteArray::number(i * 2654435761u);
    return result.first(size);
}

[[nodiscard]] inline QElapsedTimer startedClock()
{
    QElapsedTimer clock;
    clock.start();
    return clock;
}

} // namespace zorvane::tests
