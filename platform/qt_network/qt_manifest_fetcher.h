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
    /** Trusts @p authorities, if any are given, in the place of those that the system trusts. */
    explicit QtManifestFetcher(const QList<QSslCertificate> &authorities = {});
    /** Ends exchanges that are under way. */
    ~QtManifestFetcher() override;

    void fetch(const ManifestRequest &request, Completion done) override;

private:
    const QList<QSslCertificate> m_authorities;
    QNetworkAccessManager m_manager;
};

} // namespace zorvane::platform::qt_network
