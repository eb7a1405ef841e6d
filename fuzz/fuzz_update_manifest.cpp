#include "fuzz/target.h"
#include "updates/app_update.h"
#include "updates/download_address.h"
#include "updates/version_comparison.h"

using namespace zorvane::updates;
using namespace Qt::StringLiterals;
using zorvane::fuzz::require;

namespace
{

/** Ends the program if an address is let through that is not the vendor's. */
void requireVendor(const QString &text)
{
    const auto address = allowedDownloadAddress(text);
    if (!address)
        return;
    const QString host = address->host();
    const bool isVendor = host == "kestrelworks.dev"_L1 || host == "www.kestrelworks.dev"_L1;
    // Read again by other rules, it has to be the same place.
    const QUrl tolerant(text, QUrl::TolerantMode);
    require(isVendor && address->scheme() == "https"_L1 && tolerant.host() == host);
}

/** Ends the program if the order of two versions depends on which is asked first. */
void requireOrder(const QString &a, const QString &b)
{
    const int order = compareNumerically(a, b);
    const int reverse = compareNumerically(b, a);
    require((order < 0) == (reverse > 0) && (order > 0) == (reverse < 0));
}

} // namespace

/** Feeds manifests, and addresses and versions by themselves, to the update check. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // No longer one is ever read.
    constexpr std::size_t longestManifest = 65536;
    if (size > longestManifest)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString text = QString::fromUtf8(bytes);
    requireVendor(text);
    const qsizetype middle = text.size() / 2;
    requireOrder(text.first(middle), text.sliced(middle));
    static_cast<void>(buildNumber(text));
    if (const auto update = decodedUpdate(bytes)) {
        requireVendor(update->downloadURL);
        require(decodedUpdate(encodedUpdate(*update)) == update);
    }
    return 0;
}
