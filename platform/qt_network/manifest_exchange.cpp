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
    const ManifestRequest &request, ManifestFetcher::Completion done, QObject *parent)
    : QObject(parent)
    , m_mostBytes(request.longestBody + 1)
    , m_done(std::move(done))
{
    for (QTimer *const timer : {&m_idle, &m_total}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, &ManifestExchange::timedOut);
    }
    m_idle.setInterval(request.idleTimeout);
    m_total.start(request.totalTimeout);
}

void ManifestExchange::begin(QNetworkAccessManager &manager, const QNetworkRequest &request)
{
    if (!m_done)
        return;
    m_reply = manager.get(request);
    m_reply->setParent(this);
    // A redirect that brings a body longer than this fills the buffer, is not read on and ends by
    // the idle timeout instead of being followed. No manifest is behind such a redirect, and what
    // is never read takes no memory.
    m_reply->setReadBufferSize(m_mostBytes);
    connect(m_reply, &QNetworkReply::readyRead, this, &ManifestExchange::read);
    connect(m_reply, &QNetworkReply::finished, this, &ManifestExchange::finished);
    // Not every error ends the reply: one that unpacks to far too much goes on without an end.
    connect(m_reply, &QNetworkReply::errorOccurred, this, &ManifestExchange::finished,
        Qt::QueuedConnection);
    watchProgress();
}

void ManifestExchange::watchProgress()
{
    m_idle.start();
    const auto progressed = [this] { m_idle.start(); };
    connect(m_reply, &QNetworkReply::encrypted, this, progressed);
    connect(m_reply, &QNetworkReply::requestSent, this, progressed);
    connect(m_reply, &QNetworkReply::redirected, this, progressed);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, progressed);
    connect(m_reply, &QNetworkReply::readyRead, this, progressed);
}

void ManifestExchange::read()
{
    m_body += m_reply->read(m_mostBytes - m_body.size());
    if (m_body.size() >= m_mostBytes)
        finished();
}

void ManifestExchange::finished()
{
    if (!m_done)
        return;
    if (m_reply->isOpen() && m_body.size() < m_mostBytes)
        m_body += m_reply->read(m_mostBytes - m_body.size());
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    // To Qt the statuses of failure are errors as well; here they are answers.
    if (m_reply->error() == QNetworkReply::NoError || status >= 400)
        answer(ManifestResponse{status, m_body});
    else
        answer(errorOf(m_reply->error(), m_reply->errorString()));
}

void ManifestExchange::timedOut()
{
    answer(errorOf(QNetworkReply::TimeoutError, u"The server took too long"_s));
}

void ManifestExchange::answer(const ManifestFetcher::Result &result)
{
    m_idle.stop();
    m_total.stop();
    if (m_reply != nullptr) {
        m_reply->disconnect(this);
        // A reply that has an error ends with its deletion. To abort it as well would be a second
        // error, of which Qt writes to the log.
        if (m_reply->error() == QNetworkReply::NoError)
            m_reply->abort();
    }
    deleteLater();
    std::exchange(m_done, nullptr)(result);
}

} // namespace zorvane::platform::qt_network
