#include "updates/app_update.h"
#include "updates/download_address.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace zorvane::updates;
using namespace Qt::StringLiterals;

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
    if (!isVendor || address->scheme() != "https"_L1 || tolerant.host() != host)
        std::abort();
}

} // namespace

/** Feeds manifests, and addresses by themselves, to the update check. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    requireVendor(QString::fromUtf8(bytes));
    if (const auto update = decodedUpdate(bytes)) {
        requireVendor(update->downloadURL);
        if (decodedUpdate(encodedUpdate(*update)) != update)
            std::abort();
    }
    return 0;
}
