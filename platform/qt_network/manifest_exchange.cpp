#include "platform/qt_network/manifest_exchange.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::platform::qt_network
{

PlatformError errorOf(QNetworkReply::NetworkError code, const QString &description)
{
    return {u"QNetworkReply"_s, code, description};
}

ManifestExchange::ManifestExchange(
    QNetworkReply *reply, const ManifestRequest &request, ManifestFetcher::Completion done)
    : QObject(reply)
    , m_reply(*reply)
    , m_mostBytes(request.longestBody + 1)
    , m_done(std::move(done))
{
    m_reply.setReadBufferSize(m_mostBytes);
    connect(reply, &QNetworkReply::readyRead, this, &ManifestExchange::read);
    connect(reply, &QNetworkReply::finished, this, &ManifestExchange::finished);
    // Not every error ends the reply: one that unpacks to far too much goes on without an end.
    connect(reply, &QNetworkReply::errorOccurred, this, &ManifestExchange::finished,
        Qt::QueuedConnection);
    watchClock(request);
}

void ManifestExchange::watchClock(const ManifestRequest &request)
{
    for (QTimer *const timer : {&m_idle, &m_total}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, &ManifestExchange::timedOut);
    }
    m_total.start(request.totalTimeout);
    m_idle.start(request.idleTimeout);
    const auto progressed = [this] { m_idle.start(); };
    connect(&m_reply, &QNetworkReply::encrypted, this, progressed);
    connect(&m_reply, &QNetworkReply::requestSent, this, progressed);
    connect(&m_reply, &QNetworkReply::redirected, this, progressed);
    connect(&m_reply, &QNetworkReply::metaDataChanged, this, progressed);
    connect(&m_reply, &QNetworkReply::readyRead, this, progressed);
}

void ManifestExchange::read()
{
    m_body += m_reply.read(m_mostBytes - m_body.size());
    if (m_body.size() >= m_mostBytes)
        finished();
}

void ManifestExchange::finished()
{
    if (!m_done)
        return;
    if (m_reply.isOpen() && m_body.size() < m_mostBytes)
        m_body += m_reply.read(m_mostBytes - m_body.size());
    const int status = m_reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    // To Qt the statuses of failure are errors as well; here they are answers.
    if (m_reply.error() == QNetworkReply::NoError || status >= 400)
        answer(ManifestResponse{status, m_body});
    else
        answer(errorOf(m_reply.error(), m_reply.errorString()));
}

void ManifestExchange::timedOut()
{
    answer(errorOf(QNetworkReply::TimeoutError, u"The server took too long"_s));
}

void ManifestExchange::answer(const ManifestFetcher::Result &result)
{
    m_reply.disconnect(this);
    m_idle.stop();
    m_total.stop();
    // A reply that has an error ends with its deletion. To abort it as well would be a second error,
    // of which Qt writes to the log.
    if (m_reply.error() == QNetworkReply::NoError)
        m_reply.abort();
    m_reply.deleteLater();
    std::exchange(m_done, nullptr)(result);
}

} // namespace zorvane::platform::qt_network
