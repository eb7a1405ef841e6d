#pragma once

#include "fetcher_fixture.h"
#include "platform/fetching_process/process_manifest_fetcher.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace zorvane::tests
{

/** The same with a fetcher that has programs fetch. */
class ProcessFixture : public FetcherFixture
{
public:
    void use(const QString &program, std::chrono::milliseconds pause = {})
    {
        fetcher
            = std::make_unique<platform::fetching_process::ProcessManifestFetcher>(program, pause);
    }

    /** The error that a fetch ends in; an empty one if it does not. */
    platform::PlatformError error()
    {
        const auto result = fetch();
        const auto *const found = std::get_if<platform::PlatformError>(&result);
        return found == nullptr ? platform::PlatformError() : *found;
    }
};

/** A server that takes a connection and says nothing. */
class SilentServer final : public QTcpServer
{
public:
    SilentServer()
    {
        if (!listen(QHostAddress::LocalHost))
            qFatal("%s", qPrintable(errorString()));
    }

    [[nodiscard]] QUrl url() const
    {
        return QUrl(QStringLiteral("https://127.0.0.1:%1/").arg(serverPort()));
    }

    /** The other end of it; none if nobody comes. */
    std::unique_ptr<QTcpSocket> caller()
    {
        (void)QTest::qWaitFor([this] { return hasPendingConnections(); }, 30'000);
        return std::unique_ptr<QTcpSocket>(nextPendingConnection());
    }
};

} // namespace zorvane::tests
