#include "updates/download_address.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;

class TestDownloadAddress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allowsTheVendorsOwnPages_data()
    {
        QTest::addColumn<QString>("address");
        for (const QString &address :
            {u"https://kestrelworks.dev/d"_s, u"https://kestrelworks.dev"_s,
                u"https://www.kestrelworks.dev/zorvane/latest.dmg"_s,
                u"HTTPS://KestrelWorks.DEV/d"_s, u"https://user:pw@kestrelworks.dev/"_s,
                u"https://kestrelworks.dev:8443/"_s, u"https://kestrelworks.dev#@evil.example/"_s,
                u"https://kestrelworks.dev?@evil.example/"_s,
                u"https://kestrelworks.dev/a%20b?c=%5C#d"_s})
            QTest::addRow("%s", qUtf8Printable(address)) << address;
    }

    void allowsTheVendorsOwnPages()
    {
        QFETCH(QString, address);
        const auto allowed = updates::allowedDownloadAddress(address);
        QVERIFY(allowed);
        QVERIFY(allowed->isValid());
        QCOMPARE(
            QString::fromLatin1(allowed->toEncoded()).compare(address, Qt::CaseInsensitive), 0);
    }

    void refusesEveryOtherAddress_data()
    {
        QTest::addColumn<QString>("address");
        for (const QString &address : {
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
             })
            QTest::addRow("%s", qUtf8Printable(address.toHtmlEscaped())) << address;
    }

    void refusesEveryOtherAddress()
    {
        QFETCH(QString, address);
        QVERIFY(!updates::allowedDownloadAddress(address));
    }

    void theManifestIsOnTheVendorsHost()
    {
        QCOMPARE(
            updates::manifestAddress(), QUrl(u"https://kestrelworks.dev/updates/latest.json"_s));
        QVERIFY(updates::allowedDownloadAddress(updates::manifestAddress().toString()));
    }
};

QTEST_GUILESS_MAIN(TestDownloadAddress)
#include "tst_download_address.moc"
