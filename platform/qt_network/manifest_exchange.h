#pragma once

#include "platform/manifest_fetcher.h"

#include <QNetworkReply>
#include <QObject>
#include <QTimer>

namespace zorvane::platform::qt_network
{

[[nodiscard]] PlatformError errorOf(QNetworkReply::NetworkError code, const QString &description);

/**
 * One exchange that is under way: reads its reply up to the limit and no further, watches the
 * clock, answers once, and has the reply deleted then. A child of its reply.
 */
class ManifestExchange final : public QObject
{
public:
    ManifestExchange(
        QNetworkReply *reply, const ManifestRequest &request, ManifestFetcher::Completion done);

private:
    void watchClock(const ManifestRequest &request);
    void read();
    void finished();
    void timedOut();
    void answer(const ManifestFetcher::Result &result);

    QNetworkReply &m_reply;
    /** One byte beyond the longest body shows that there was more. */
    const qsizetype m_mostBytes;
    ManifestFetcher::Completion m_done;
    QByteArray m_body;
    QTimer m_idle;
    QTimer m_total;
};

} // namespace zorvane::platform::qt_network
