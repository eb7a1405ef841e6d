#pragma once

#include "platform/manifest_fetcher.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QTimer>

namespace zorvane::platform::qt_network
{

[[nodiscard]] PlatformError errorOf(QNetworkReply::NetworkError code, const QString &description);

/**
 * One exchange: reads its reply up to the limit and no further, watches the clock, answers once,
 * and deletes itself and the reply then.
 */
class ManifestExchange final : public QObject
{
public:
    /** Its whole time runs from here on, whether it ever begins or not. */
    ManifestExchange(
        const ManifestRequest &request, ManifestFetcher::Completion done, QObject *parent);

    /** Sends the request, if the time for it is not over. */
    void begin(QNetworkAccessManager &manager, const QNetworkRequest &request);

private:
    void watchProgress();
    void read();
    void finished();
    void timedOut();
    void answer(const ManifestFetcher::Result &result);

    /** A child of this; none until it begins. */
    QNetworkReply *m_reply = nullptr;
    /** One byte beyond the longest body shows that there was more. */
    const qsizetype m_mostBytes;
    ManifestFetcher::Completion m_done;
    QByteArray m_body;
    QTimer m_idle;
    QTimer m_total;
};

} // namespace zorvane::platform::qt_network
