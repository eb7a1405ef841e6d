// The whole check against a real server on loopback.

#include "fakes/fake_platform.h"
#include "https/https_server.h"
#include "https/test_authority.h"
#include "platform/qt_network/qt_manifest_fetcher.h"
#include "sample_updates.h"
#include "updates/update_controller.h"

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

/** A manifest of so many bytes. */
QByteArray manifestOfSize(qsizetype size)
{
    const QByteArray manifest = updates::encodedUpdate(sampleUpdate(u"2.0"_s));
    return manifest + QByteArray(size - manifest.size(), ' ');
}

} // namespace

class TestUpdateCheckOverHttps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_authority = std::make_unique<TestAuthority>();
        m_server = std::make_unique<HttpsServer>(m_authority->issue(u"DNS:localhost"_s));
    }

    void findsANewerRelease_data()
    {
        QTest::addColumn<QByteArray>("answer");
        const QByteArray manifest = updates::encodedUpdate(sampleUpdate(u"2.0"_s));
        QTest::newRow("200") << response(manifest);
        QTest::newRow("299") << response(manifest, 299);
        QTest::newRow("65536 bytes") << response(manifestOfSize(65536));
        QTest::newRow("in chunks") << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                + chunked(manifest) + "0\r\n\r\n";
    }

    void findsANewerRelease()
    {
        QFETCH(QByteArray, answer);
        FakePlatform system;
        const auto updates = checked(system, answer);
        QCOMPARE(updates->availableUpdate(), sampleUpdate(u"2.0"_s));
        QCOMPARE(updates->message(), u"Zorvane 2.0 is available."_s);
        QVERIFY(system.preferences.date(u"updates.lastCheckedAt"_s));
        QVERIFY(answer.contains("chunked")
            || answer.endsWith(*system.preferences.data(u"updates.cachedManifest"_s)));
    }

    void failsAndKeepsNothing_data()
    {
        QTest::addColumn<QByteArray>("answer");
        const QByteArray manifest = updates::encodedUpdate(sampleUpdate(u"2.0"_s));
        QTest::newRow("300") << response(manifest, 300);
        QTest::newRow("404") << response(manifest, 404);
        QTest::newRow("500") << response(manifest, 500);
        QTest::newRow("65537 bytes") << response(manifestOfSize(65537));
        QTest::newRow("65537 bytes in chunks")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                + chunked(manifestOfSize(65537)) + "0\r\n\r\n";
        QTest::newRow("cut off") << response(manifest).chopped(1);
        QTest::newRow("no JSON") << response("<html></html>");
        QTest::newRow("a wrong type")
            << response(json("{'version':2,'downloadURL':'https://kestrelworks.dev/'}"));
        for (const QString &address :
            {u"http://kestrelworks.dev/"_s, u"https://kestrelworks.dev@evil.example/"_s,
                u"https://evil.example\\@kestrelworks.dev/"_s, u"https://kestrelworks.dev./"_s,
                u"https://kestrelworks.dev:99999/"_s, u"https:///x"_s, u"/x"_s,
                u"https://kestrelworks%2Edev/"_s, u"https://kestrelworks\u3002dev/"_s,
                u"https://kestrelworks.dev/a b"_s, u"https://kestrelworks.dev.evil.example/"_s,
                u"https://[::1]/"_s, u"javascript:alert(1)"_s, u"https://kestrel\tworks.dev/"_s}) {
            updates::AppUpdate update = sampleUpdate(u"2.0"_s);
            update.downloadURL = address;
            QTest::addRow("%s", qPrintable(address)) << response(updates::encodedUpdate(update));
        }
    }

    void failsAndKeepsNothing()
    {
        QFETCH(QByteArray, answer);
        FakePlatform system;
        const auto updates = checked(system, answer);
        QCOMPARE(updates->message(),
            u"Zorvane could not check for updates. Check your internet connection and try again."_s);
        QVERIFY(!updates->availableUpdate());
        QVERIFY(system.preferences.written.isEmpty());
    }

private:
    std::unique_ptr<UpdateController> checked(FakePlatform &system, const QByteArray &answer)
    {
        m_server->answer(path, answer);
        // A connection of its own for each check.
        m_fetcher = std::make_unique<QtManifestFetcher>(QList{m_authority->certificate()});
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

    std::unique_ptr<TestAuthority> m_authority;
    std::unique_ptr<HttpsServer> m_server;
    std::unique_ptr<QtManifestFetcher> m_fetcher;
};

QTEST_GUILESS_MAIN(TestUpdateCheckOverHttps)
#include "tst_update_check_over_https.moc"
