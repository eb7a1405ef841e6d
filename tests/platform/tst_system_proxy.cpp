#include "platform/qt_network/qt_manifest_fetcher.h"
#include "platform/standard_scheduler.h"

#include <QEventLoop>
#include <QRegularExpression>
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
    void initTestCase()
    {
        QVERIFY(m_proxy.listen(QHostAddress::LocalHost));
        const QByteArray address = "http://127.0.0.1:" + QByteArray::number(m_proxy.serverPort());
        qputenv("https_proxy", address);
        qputenv("http_proxy", address);
        for (const char *const name : {"no_proxy", "NO_PROXY", "all_proxy", "ALL_PROXY"})
            qunsetenv(name);
    }

    void goesThroughTheProxyOfTheSystem()
    {
        bool failed = false;
        fetch([&](const auto &result) { failed = std::holds_alternative<PlatformError>(result); });
        QTRY_VERIFY(m_proxy.hasPendingConnections());
        auto *const connection = m_proxy.nextPendingConnection();
        QTRY_VERIFY(connection->canReadLine());
        QVERIFY(connection->readLine().startsWith("CONNECT manifest.invalid:443 HTTP/1."));
        connection->write("HTTP/1.1 502 No\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        connection->disconnectFromHost();
        QTRY_VERIFY(failed);
    }

    void failsWithoutALogLineWhenTheProxyIsGone()
    {
        m_proxy.close();
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        // What Qt writes of an exchange that is ended twice depends on which event comes first.
        for (int i = 0; i < 40; ++i) {
            QEventLoop loop;
            bool failed = false;
            fetch([&](const auto &result) {
                failed = std::holds_alternative<PlatformError>(result);
                loop.quit();
            });
            loop.exec();
            QVERIFY(failed);
        }
    }

private:
    void fetch(const ManifestFetcher::Completion &done)
    {
        m_fetcher.fetch({.address = QUrl(u"https://manifest.invalid/latest.json"_s),
                            .accept = "application/json",
                            .longestBody = 10,
                            .idleTimeout = 10s,
                            .totalTimeout = 10s},
            done);
    }

    QTcpServer m_proxy;
    StandardScheduler m_scheduler;
    qt_network::QtManifestFetcher m_fetcher{m_scheduler};
};

QTEST_GUILESS_MAIN(TestSystemProxy)
#include "tst_system_proxy.moc"
