#include "updates/download_address.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace zorvane::updates
{

namespace
{

constexpr auto vendorHost = "kestrelworks.dev"_L1;

const auto schemePrefix = "https://"_L1;

/** What stands between the scheme and the path. */
QStringView authorityOf(QStringView text)
{
    const QStringView rest = text.sliced(schemePrefix.size());
    const auto *const end = std::ranges::find_if(
        rest, [](QChar each) { return each == u'/' || each == u'?' || each == u'#'; });
    return rest.first(end - rest.begin());
}

bool isAmbiguous(QChar character)
{
    return character == u'\\' || character.isSpace()
        || character.category() == QChar::Other_Control;
}

bool isAmbiguousInAuthority(QChar character)
{
    return character == u'%' || character.unicode() > 0x7E;
}

bool isVendorHost(const QString &host)
{
    return host == vendorHost || host == "www."_L1 + vendorHost;
}

} // namespace

QUrl manifestAddress()
{
    return {schemePrefix + vendorHost + "/updates/latest.json"_L1};
}

std::optional<QUrl> allowedDownloadAddress(const QString &text)
{
    if (!text.startsWith(schemePrefix, Qt::CaseInsensitive)
        || std::ranges::any_of(text, isAmbiguous)
        || std::ranges::any_of(authorityOf(text), isAmbiguousInAuthority))
        return std::nullopt;
    QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || !isVendorHost(url.host(QUrl::FullyEncoded).toLower()))
        return std::nullopt;
    return url;
}

} // namespace zorvane::updates
