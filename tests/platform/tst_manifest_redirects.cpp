// Which redirects are followed, and how far.

#include "fetcher_fixture.h"

#include <QTcpServer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::tests;

class TestManifestRedirects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_f.restart(); }

    void followsRedirects_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {301, 302, 303, 307, 308})
            QTest::addRow("%d", status) << status;
    }

    void followsRedirects()
    {
        QFETCH(int, status);
        m_f.server->redirect(u"/manifest"_s, status, u"/moved"_s);
        m_f.server->redirect(
            u"/moved"_s, status, m_f.server->url(u"/there"_s, u"127.0.0.1"_s).toString());
        m_f.server->answer(u"/there"_s, response("body"));
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QCOMPARE(answer->status, 200);
        QCOMPARE(answer->body, "body");
        QVERIFY(m_f.server->requests.constLast().startsWith("GET /there "));
        QVERIFY(m_f.server->requests.constLast().contains("\r\nAccept: application/json\r\n"));
    }

    void takesNothingOfARedirectsOwnBody()
    {
        m_f.server->answer(u"/manifest"_s, response("moved", 302, "Location: /there\r\n"));
        m_f.server->answer(u"/there"_s, response("body"));
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QCOMPARE(answer->status, 200);
        QCOMPARE(answer->body, "body");
    }

    void isNotHeldByARedirectThatGoesOnAndOn()
    {
        m_f.server->answer(u"/manifest"_s,
            response(sampleBody(10 * FetcherFixture::limit), 302, "Location: /there\r\n"));
        m_f.request.idleTimeout = 300ms;
        QCOMPARE(m_f.failure(), QNetworkReply::TimeoutError);
    }

    void aRedirectThatNamesNoPlaceLeadsNowhere_data()
    {
        QTest::addColumn<QByteArray>("headers");
        QTest::newRow("no header") << QByteArray();
        QTest::newRow("an empty one") << QByteArray("Location: \r\n");
        QTest::newRow("no URL") << QByteArray("Location: https://[\r\n");
    }

    void aRedirectThatNamesNoPlaceLeadsNowhere()
    {
        QFETCH(QByteArray, headers);
        m_f.server->answer(u"/manifest"_s, response("body", 302, headers));
        const auto result = m_f.fetch();
        const auto *const answer = std::get_if<ManifestResponse>(&result);
        QVERIFY(answer == nullptr || answer->status == 302);
    }

    void neverFollowsToALessSafeScheme()
    {
        QTcpServer plain;
        QVERIFY(plain.listen(QHostAddress::LocalHost));
        m_f.server->redirect(
            u"/manifest"_s, 302, u"http://localhost:%1/"_s.arg(plain.serverPort()));
        QCOMPARE(m_f.failure(), QNetworkReply::InsecureRedirectError);
        QVERIFY(!plain.waitForNewConnection(100));
    }

    void followsToNoOtherScheme_data()
    {
        QTest::addColumn<QString>("location");
        for (const QString &location : {u"file:///etc/hostname"_s, u"data:text/plain,body"_s,
                 u"ftp://localhost/"_s, u"qrc:/x"_s})
            QTest::addRow("%s", qPrintable(location)) << location;
    }

    void followsToNoOtherScheme()
    {
        QFETCH(QString, location);
        m_f.server->redirect(u"/manifest"_s, 302, location);
        QVERIFY(m_f.failure() != QNetworkReply::NoError);
    }

    void givesUpOnALoop()
    {
        m_f.server->redirect(u"/manifest"_s, 302, u"/manifest"_s);
        QCOMPARE(m_f.failure(), QNetworkReply::TooManyRedirectsError);
        QCOMPARE(m_f.server->requests.size(), 17);
    }

    void checksTheCertificateBehindARedirect()
    {
        HttpsServer other(m_f.authority.issue(u"DNS:other.example"_s));
        m_f.server->redirect(u"/manifest"_s, 302, other.url(u"/"_s).toString());
        QCOMPARE(m_f.failure(), QNetworkReply::SslHandshakeFailedError);
        QVERIFY(other.requests.isEmpty());
    }

private:
    FetcherFixture m_f;
};

QTEST_GUILESS_MAIN(TestManifestRedirects)
#include "tst_manifest_redirects.moc"
