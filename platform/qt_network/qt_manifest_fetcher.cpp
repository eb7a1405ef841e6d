#include "platform/qt_network/qt_manifest_fetcher.h"

#include "platform/qt_network/manifest_exchange.h"

#include <QNetworkProxyFactory>
#include <QNetworkRequest>

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
    runInBackground(m_scheduler, Priority::Utility, m_lifetime.watch(),
        &QSslConfiguration::defaultConfiguration,
        [this, request, done = std::move(done)](
            const QSslConfiguration &tls) { start(request, tls, done); });
}

void QtManifestFetcher::start(
    const ManifestRequest &request, const QSslConfiguration &tls, Completion done)
{
    QSslConfiguration trusting = tls;
    if (!m_authorities.isEmpty())
        trusting.setCaCertificates(m_authorities);
    auto *const reply = m_manager.get(networkRequest(request, trusting));
    new ManifestExchange(reply, request, std::move(done)); // ends with the reply
}

} // namespace zorvane::platform::qt_network
