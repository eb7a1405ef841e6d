#pragma once

#include "platform/platform_error.h"

#include <chrono>
#include <functional>
#include <QByteArray>
#include <QUrl>
#include <variant>

namespace zorvane::platform
{

/** What to fetch, and how much patience to have. */
struct ManifestRequest {
    QUrl address;
    /** The value of the "Accept" header. */
    QByteArray accept;
    /** In bytes, as they are after the transfer's own compression. */
    qsizetype longestBody = 0;
    /** Without any progress the exchange fails after this time. */
    std::chrono::milliseconds idleTimeout{0};
    /** The exchange fails after this time in any case. */
    std::chrono::milliseconds totalTimeout{0};
};

/** An answer over HTTP, whatever its status. */
struct ManifestResponse {
    int status = 0;
    /** Where there was more than the longest body asked for, that much and one byte of it. That of
     * a status of failure may be incomplete. */
    QByteArray body;
};

/**
 * Fetches a small document over HTTPS. Certificates are checked, the system's proxies are used,
 * redirects are followed, but never to a less safe scheme, and nothing is answered from a cache.
 */
class ManifestFetcher
{
public:
    using Result = std::variant<ManifestResponse, PlatformError>;
    /** Called exactly once, on any thread, never before the call that it answers has returned; not
     * at all once the fetcher is gone. */
    using Completion = std::function<void(const Result &result)>;

    virtual ~ManifestFetcher() = default;

    /** Asks for the document by GET. Main thread. */
    virtual void fetch(const ManifestRequest &request, Completion done) = 0;
};

} // namespace zorvane::platform
