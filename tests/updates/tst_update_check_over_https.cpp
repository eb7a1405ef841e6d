// The whole check against a real server on loopback.

#include "https/https_server.h"
#include "https/test_authority.h"
#include "platform/qt_network/qt_manifest_fetcher.h"
#include "platform/standard_scheduler.h"
#include "refused_addresses.h"
#include "update_fixture.h"

#include <memory>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using platform::qt_network::QtManifestFetcher;
using updates::UpdateController;

namespace
{

const QString path = u"/updates/latest.json"_s;

QByteArray sampleManifest()
{
    return updates::encodedUpdate(sampleUpdate(u"2.0"_s));
}

QByteArray inChunks(const QByteArray &body)
{
    return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunked(body) + "0\r\n\r\n";
}

QByteArray packed(const QByteArray &body)
{
    return response(gzip(body), 200, "Content-Encoding: gzip\r\n");
}

} // namespace

class TestUpdateCheckOverHttps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_authority = std::make_unique<TestAuthority>();
        m_identity = m_authority->issue(u"DNS:localhost"_s);
    }

    void init() { m_server = std::make_unique<HttpsServer>(m_identity); }

    void findsANewerRelease_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QByteArray>("manifest");
        const QByteArray manifest = sampleManifest();
        const QByteArray longest = manifestOfSize(65536);
        QTest::newRow("200") << response(manifest) << manifest;
        QTest::newRow("299") << response(manifest, 299) << manifest;
        QTest::newRow("65536 bytes") << response(longest) << longest;
        QTest::newRow("65536 bytes in chunks") << inChunks(longest) << longest;
        QTest::newRow("65536 bytes packed") << packed(longest) << longest;
    }

    void findsANewerRelease()
    {
        QFETCH(QByteArray, answer);
        FakePlatform system;
        const auto updates = checked(system, answer);
        QCOMPARE(updates->availableUpdate(), sampleUpdate(u"2.0"_s));
        QCOMPARE(updates->message(), u"Zorvane 2.0 is available."_s);
        QVERIFY(system.preferences.date(u"updates.lastCheckedAt"_s));
        QFETCH(QByteArray, manifest);
        QVERIFY(system.preferences.data(u"updates.cachedManifest"_s) == manifest);
    }

    void findsAReleaseBehindARedirect()
    {
        m_server->answer(u"/moved"_s, response(sampleManifest()));
        FakePlatform system;
        const auto updates = checked(system, response({}, 302, "Location: /moved\r\n"));
        QCOMPARE(updates->availableUpdate(), sampleUpdate(u"2.0"_s));
    }

    void failsAndKeepsNothing_data()
    {
        QTest::addColumn<QByteArray>("answer");
        const QByteArray manifest = sampleManifest();
        const QByteArray tooLong = manifestOfSize(65537);
        for (const int status : {199, 300, 404, 500})
            QTest::addRow("%d", status) << response(manifest, status);
        QTest::newRow("65537 bytes") << response(tooLong);
        QTest::newRow("65537 bytes in chunks") << inChunks(tooLong);
        QTest::newRow("65537 bytes packed") << packed(tooLong);
        QTest::newRow("cut off") << response(manifest).chopped(1);
        QTest::newRow("cut off between chunks") << inChunks(manifest).chopped(5);
        QTest::newRow("cut off in what is packed")
            << response(gzip(manifest).chopped(12), 200, "Content-Encoding: gzip\r\n");
        QTest::newRow("a redirect to a less safe place")
            << response({}, 302, "Location: http://kestrelworks.dev/updates/latest.json\r\n");
        QTest::newRow("nothing") << response({});
        QTest::newRow("no JSON") << response("<html></html>");
        const auto *const page = "'downloadURL':'https://kestrelworks.dev/'";
        QTest::newRow("a number as version")
            << response(json("{'version':2,%1}").replace("%1", json(page)));
        QTest::newRow("a text as build")
            << response(json("{'version':'2','build':'57',%1}").replace("%1", json(page)));
        QTest::newRow("a list as notes")
            << response(json("{'version':'2','releaseNotes':[],%1}").replace("%1", json(page)));
        QTest::newRow("null as address") << response(json("{'version':'2','downloadURL':null}"));
    }

    void failsAndKeepsNothing()
    {
        QFETCH(QByteArray, answer);
        FakePlatform system;
        const auto updates = checked(system, answer);
        QCOMPARE(updates->message(), failureText);
        QVERIFY(!updates->availableUpdate());
        QVERIFY(system.preferences.written.isEmpty());
    }

    void believesNoManifestOfARefusedAddress_data()
    {
        QTest::addColumn<QString>("address");
        for (const QString &address : refusedAddresses())
            QTest::addRow("%s", qUtf8Printable(address.toHtmlEscaped())) << address;
    }

    void believesNoManifestOfARefusedAddress()
    {
        QFETCH(QString, address);
        updates::AppUpdate update = sampleUpdate(u"2.0"_s);
        update.downloadURL = address;
        FakePlatform system;
        const auto updates = checked(system, response(updates::encodedUpdate(update)));
        QCOMPARE(updates->message(), failureText);
        QVERIFY(!updates->availableUpdate());
        QVERIFY(system.preferences.written.isEmpty());
    }

    void believesNoServerWithAWrongCertificate()
    {
        m_server = std::make_unique<HttpsServer>(m_authority->issue(u"DNS:other.example"_s));
        FakePlatform system;
        const auto updates = checked(system, response(sampleManifest()));
        QCOMPARE(updates->message(), failureText);
        QVERIFY(system.preferences.written.isEmpty());
        QVERIFY(m_server->requests.isEmpty());
    }

private:
    std::unique_ptr<UpdateController> checked(FakePlatform &system, const QByteArray &answer)
    {
        m_server->answer(path, answer);
        // A connection of its own for each check.
        m_fetcher
            = std::make_unique<QtManifestFetcher>(m_scheduler, QList{m_authority->certificate()});
        auto updates = std::make_unique<UpdateController>(
            UpdateController::Services{system.scheduler, system.preferences, system.mainBundle,
                *m_fetcher, system.actions},
            m_server->url(path));
        updates->checkForUpdates(true, true);
        const bool ended = QTest::qWaitFor(
            [&] {
                system.scheduler.settle();
                return !updates->isChecking();
            },
            30'000);
        if (!ended)
            qFatal("The check did not end");
        return updates;
    }

    platform::StandardScheduler m_scheduler;
    std::unique_ptr<TestAuthority> m_authority;
    QSslConfiguration m_identity;
    std::unique_ptr<HttpsServer> m_server;
    std::unique_ptr<QtManifestFetcher> m_fetcher;
};

QTEST_GUILESS_MAIN(TestUpdateCheckOverHttps)
#include "tst_update_check_over_https.moc"
