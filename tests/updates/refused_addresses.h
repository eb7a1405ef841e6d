#pragma once

#include <QString>
#include <QStringList>

namespace zorvane::tests
{

/** Addresses from which nothing may be downloaded: other places, and texts made to deceive. */
inline QStringList refusedAddresses()
{
    using namespace Qt::StringLiterals;
    return {
        u"http://kestrelworks.dev/"_s,
        u"ftp://kestrelworks.dev/"_s,
        u"https://kestrelworks.dev@evil.example/"_s,
        u"https://kestrelworks.dev:x@evil.example/"_s,
        u"https://a@evil.example@kestrelworks.dev/"_s,
        u"https://evil.example\\@kestrelworks.dev/"_s,
        u"https://kestrelworks.dev\\.evil.example/"_s,
        u"https:\\\\kestrelworks.dev/"_s,
        u"https://kestrelworks.dev/\\evil.example"_s,
        u"https://kestrelworks.dev./"_s,
        u"https://kestrelworks.dev:99999/"_s,
        u"https://kestrelworks.dev:x/"_s,
        u"https:///x"_s,
        u"https://"_s,
        u"https:kestrelworks.dev/"_s,
        u"https:/kestrelworks.dev/"_s,
        u"//kestrelworks.dev/"_s,
        u"/x"_s,
        u""_s,
        u"https://kestrelworks%2Edev/"_s,
        u"https://kestrelworks.dev%2eevil.example/"_s,
        u"https://us%65r@kestrelworks.dev/"_s,
        u"https://kestrelworks\u3002dev/"_s,
        u"https://\uFF4Bestrelworks.dev/"_s,
        u"https://\u00ADkestrelworks.dev/"_s,
        u"https://kestrelworks.dev/a b"_s,
        u"https://kestrelworks.dev/a\u00A0b"_s,
        u"https://kestrelworks.dev/a\u0085b"_s,
        u"https://kestrelworks.dev/\n"_s,
        u" https://kestrelworks.dev/"_s,
        u"https://kestrelworks.dev/%zz"_s,
        u"https://evil.example/@kestrelworks.dev/"_s,
        u"https://kestrelworks.dev.evil.example/"_s,
        u"https://download.kestrelworks.dev/"_s,
        u"https://wwwkestrelworks.dev/"_s,
        u"https://evil-kestrelworks.dev/"_s,
        u"https://www.www.kestrelworks.dev/"_s,
        u"https://[::1]/"_s,
        u"https://[kestrelworks.dev]/"_s,
        u"javascript:alert(1)"_s,
        u"https://kestrel\tworks.dev/"_s,
        u"https://kestrelworks.dev"_s + QChar(u'\0') + u".evil.example/"_s,
        u"view-source:https://kestrelworks.dev/"_s,
    };
}

} // namespace zorvane::tests
