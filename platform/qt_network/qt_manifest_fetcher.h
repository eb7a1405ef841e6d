#pragma once

#include "platform/main_thread.h"
#include "platform/manifest_fetcher.h"
#include "platform/scheduler.h"

#include <QList>
#include <QNetworkAccessManager>
#include <QSslCertificate>
#include <QSslConfiguration>

namespace zorvane::platform::qt_network
{

/**
 * Fetches by Qt Network. Errors have the domain "QNetworkReply" and the code of its error, a
 * timeout that of QNetworkReply::TimeoutError.
 */
class QtManifestFetcher final : public ManifestFetcher
{
public:
    /** Trusts @p authorities, if any are given, in the place of those that the system trusts. The
     * scheduler outlives this. */
    explicit QtManifestFetcher(
        Scheduler &scheduler, const QList<QSslCertificate> &authorities = {});
    /** Ends exchanges that are under way. */
    ~QtManifestFetcher() override;

    void fetch(const ManifestRequest &request, Completion done) override;

private:
    [[nodiscard]] QSslConfiguration trusting(const QSslConfiguration &tls) const;

    Scheduler &m_scheduler;
    const QList<QSslCertificate> m_authorities;
    QNetworkAccessManager m_manager;
    Lifetime m_lifetime;
};

} // namespace zorvane::platform::qt_network
