#pragma once

#include "platform/manifest_fetcher.h"

#include <QList>
#include <QNetworkAccessManager>
#include <QSslCertificate>

namespace zorvane::platform::qt_network
{

/**
 * Fetches by Qt Network. Errors have the domain "QNetworkReply" and the code of its error, a
 * timeout that of QNetworkReply::TimeoutError.
 */
class QtManifestFetcher final : public ManifestFetcher
{
public:
    /** Trusts @p moreAuthorities beside those that the system trusts. */
    explicit QtManifestFetcher(const QList<QSslCertificate> &moreAuthorities = {});
    /** Ends exchanges that are under way. */
    ~QtManifestFetcher() override;

    void fetch(const ManifestRequest &request, Completion done) override;

private:
    const QList<QSslCertificate> m_moreAuthorities;
    QNetworkAccessManager m_manager;
};

} // namespace zorvane::platform::qt_network
