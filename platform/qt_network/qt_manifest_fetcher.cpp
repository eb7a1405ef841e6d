#include "platform/qt_network/qt_manifest_fetcher.h"

#include "platform/qt_network/manifest_exchange.h"

#include <QNetworkProxyFactory>
#include <QNetworkRequest>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace zorvane::platform::qt_network
{

namespace
{

// As many as the platform's own session follows.
constexpr int mostRedirects = 16;

class SystemProxies final : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        return systemProxyForQuery(query);
    }
};

QNetworkRequest networkRequest(const ManifestRequest &request, const QSslConfiguration &tls)
{
    QNetworkRequest result(request.address);
    result.setRawHeader("Accept", request.accept);
    result.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    result.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    // One protocol only, the one whose limits and timeouts are known to hold.
    result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    result.setMaximumRedirectsAllowed(mostRedirects);
    result.setSslConfiguration(tls);
    return result;
}

} // namespace

QtManifestFetcher::QtManifestFetcher(
    Scheduler &scheduler, const QList<QSslCertificate> &authorities)
    : m_scheduler(scheduler)
    , m_authorities(authorities)
{
    m_manager.setProxyFactory(new SystemProxies); // owned by the manager
}

QtManifestFetcher::~QtManifestFetcher() = default;

void QtManifestFetcher::fetch(const ManifestRequest &request, Completion done)
{
    // Nothing is taken from a server that need not prove who it is.
    if (request.address.scheme() != "https"_L1) {
        QMetaObject::invokeMethod(
            &m_manager,
            [done = std::move(done)] {
                done(errorOf(QNetworkReply::ProtocolUnknownError, u"HTTPS is wanted"_s));
            },
            Qt::QueuedConnection);
        return;
    }
    // The first configuration loads the TLS library, which would hold up a window at launch.
    const QPointer exchange = new ManifestExchange(request, std::move(done), &m_manager);
    runInBackground(m_scheduler, Priority::Utility, m_lifetime.watch(),
        &QSslConfiguration::defaultConfiguration,
        [this, request, exchange](const QSslConfiguration &tls) {
            if (exchange != nullptr)
                exchange->begin(m_manager, networkRequest(request, trusting(tls)));
        });
}

QSslConfiguration QtManifestFetcher::trusting(const QSslConfiguration &tls) const
{
    QSslConfiguration result = tls;
    if (!m_authorities.isEmpty())
        result.setCaCertificates(m_authorities);
    return result;
}

} // namespace zorvane::platform::qt_network
