#include "platform/qt_network/qt_manifest_fetcher.h"
#include "platform/standard_scheduler.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;

/** A program of its own, because a proxy is chosen once for a whole process. */
class TestSystemProxy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goesThroughTheProxyOfTheSystem()
    {
        QTcpServer proxy;
        QVERIFY(proxy.listen(QHostAddress::LocalHost));
        const QByteArray address = "http://127.0.0.1:" + QByteArray::number(proxy.serverPort());
        qputenv("https_proxy", address);
        qputenv("http_proxy", address);
        for (const char *const name : {"no_proxy", "NO_PROXY", "all_proxy", "ALL_PROXY"})
            qunsetenv(name);

        StandardScheduler scheduler;
        qt_network::QtManifestFetcher fetcher(scheduler);
        bool answered = false;
        fetcher.fetch({.address = QUrl(u"https://manifest.invalid/latest.json"_s),
                          .accept = "application/json",
                          .longestBody = 10,
                          .idleTimeout = 10s,
                          .totalTimeout = 10s},
            [&](const ManifestFetcher::Result &result) {
                answered = std::holds_alternative<PlatformError>(result);
            });
        QTRY_VERIFY(proxy.hasPendingConnections());
        auto *const connection = proxy.nextPendingConnection();
        QTRY_VERIFY(connection->canReadLine());
        QVERIFY(connection->readLine().startsWith("CONNECT manifest.invalid:443 HTTP/1."));
        connection->write("HTTP/1.1 502 No\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        connection->disconnectFromHost();
        QTRY_VERIFY(answered);
    }
};

QTEST_GUILESS_MAIN(TestSystemProxy)
#include "tst_system_proxy.moc"
