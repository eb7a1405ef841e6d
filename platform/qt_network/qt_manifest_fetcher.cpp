#include "platform/qt_network/qt_manifest_fetcher.h"

#include "platform/qt_network/manifest_exchange.h"

#include <QNetworkProxyFactory>
#include <QNetworkRequest>
#include <QSslConfiguration>

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

QNetworkRequest networkRequest(
    const ManifestRequest &request, const QList<QSslCertificate> &authorities)
{
    QNetworkRequest result(request.address);
    result.setRawHeader("Accept", request.accept);
    result.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    result.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    result.setMaximumRedirectsAllowed(mostRedirects);
    if (!authorities.isEmpty()) {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(authorities);
        result.setSslConfiguration(configuration);
    }
    return result;
}

} // namespace

QtManifestFetcher::QtManifestFetcher(const QList<QSslCertificate> &authorities)
    : m_authorities(authorities)
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
    auto *const reply = m_manager.get(networkRequest(request, m_authorities));
    new ManifestExchange(reply, request, std::move(done)); // ends with the reply
}

} // namespace zorvane::platform::qt_network
