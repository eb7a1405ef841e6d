#include "refused_addresses.h"
#include "updates/download_address.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;

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
        for (const QString &address : refusedAddresses())
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
