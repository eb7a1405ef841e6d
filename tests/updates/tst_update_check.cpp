#include "update_fixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
using namespace zorvane::tests;
using updates::AppUpdate;
using updates::UpdateController;

/** When a check is made, what it asks for and what it does with the answer. */
class TestUpdateCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksForTheManifestAsStated()
    {
        UpdateFixture f;
        const auto updates = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        QCOMPARE(f.fetches(), 1);
        const auto &request = f.system.manifestFetcher.requests.constFirst();
        QCOMPARE(request.address, QUrl(u"https://kestrelworks.dev/updates/latest.json"_s));
        QCOMPARE(request.accept, "application/json");
        QCOMPARE(request.longestBody, 65536);
        QCOMPARE(request.idleTimeout.count(), 10'000);
        QCOMPARE(request.totalTimeout.count(), 60'000);
    }

    void keepsWhatItReceivedAndWhenItDid()
    {
        UpdateFixture f;
        const QByteArray body = "\xEF\xBB\xBF { \"version\" : \"2.0\", \"downloadURL\":"
                                "\"https://www.kestrelworks.dev/d\", \"unknown\": 1.50 }\n";
        const auto updates = f.checked(answerOf(body));
        QCOMPARE(f.system.preferences.data(cachedManifestKey), body);
        QCOMPARE(f.system.preferences.date(lastCheckKey), f.system.scheduler.now());
    }

    void checksOnceInADayUnlessForced_data()
    {
        QTest::addColumn<qint64>("millisecondsAgo");
        QTest::addColumn<bool>("force");
        QTest::addColumn<int>("fetches");
        const qint64 hour = 3'600'000;
        QTest::newRow("23 hours ago") << 23 * hour << false << 0;
        QTest::newRow("just under a day ago") << 24 * hour - 1 << false << 0;
        QTest::newRow("24 hours ago") << 24 * hour << false << 1;
        QTest::newRow("in the future") << -hour << false << 0;
        QTest::newRow("just now, forced") << qint64(0) << true << 1;
    }

    void checksOnceInADayUnlessForced()
    {
        QFETCH(qint64, millisecondsAgo);
        QFETCH(bool, force);
        UpdateFixture f;
        f.system.preferences.values.insert(
            lastCheckKey, f.system.scheduler.now().addMSecs(-millisecondsAgo));
        const auto updates = f.controller();
        updates->checkForUpdates(force, false);
        f.system.scheduler.settle();
        QTEST(int(f.fetches()), "fetches");
    }

    void aLastCheckThatIsNoDateDoesNotBlock()
    {
        UpdateFixture f;
        f.system.preferences.values.insert(lastCheckKey, u"yesterday"_s);
        const auto updates = f.controller();
        updates->checkForUpdates(false, false);
        QCOMPARE(f.fetches(), 1);
    }

    void aSecondCheckWaitsForTheDayAfterASuccess()
    {
        UpdateFixture f;
        f.system.manifestFetcher.answers = {answerOf(sampleUpdate(u"2.0"_s))};
        const auto updates = f.controller();
        updates->checkForUpdates(false, false);
        f.system.scheduler.settle();
        f.system.scheduler.advance(23h);
        updates->checkForUpdates(false, false);
        QCOMPARE(f.fetches(), 1);
        f.system.scheduler.advance(1h);
        updates->checkForUpdates(false, false);
        QCOMPARE(f.fetches(), 2);
    }

    void aFailureKeepsEverythingAndDelaysNothing_data()
    {
        QTest::addColumn<platform::ManifestFetcher::Result>("answer");
        const auto manifest = [](const QString &address) {
            AppUpdate update = sampleUpdate(u"3.0"_s);
            update.downloadURL = address;
            return answerOf(update);
        };
        const QByteArray good = updates::encodedUpdate(sampleUpdate(u"3.0"_s));
        QTest::newRow("the network is down") << platform::ManifestFetcher::Result(
            platform::PlatformError{u"network"_s, 1, u"down"_s});
        QTest::newRow("status 199") << answerOf(good, 199);
        QTest::newRow("status 300") << answerOf(good, 300);
        QTest::newRow("status 404") << answerOf(good, 404);
        QTest::newRow("65537 bytes of valid JSON") << answerOf(manifestOfSize(65537));
        QTest::newRow("no JSON") << answerOf(QByteArray("<html>"));
        QTest::newRow("an empty body") << answerOf(QByteArray());
        QTest::newRow("a wrong type") << answerOf(json("{'version':3,'downloadURL':'https://a/'}"));
        QTest::newRow("plain http on an allowed host") << manifest(u"http://kestrelworks.dev/"_s);
        QTest::newRow("https on another host") << manifest(u"https://evil.example/"_s);
    }

    void aFailureKeepsEverythingAndDelaysNothing()
    {
        QFETCH(platform::ManifestFetcher::Result, answer);
        UpdateFixture f;
        const auto updates = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        const QVariantMap stored = f.system.preferences.values;
        f.system.scheduler.advance(48h);
        f.check(*updates, answer);
        QCOMPARE(updates->message(), failureText);
        QVERIFY(!updates->isChecking());
        QCOMPARE(updates->availableUpdate()->version, u"2.0"_s);
        QVERIFY(updates->isBannerVisible());
        QCOMPARE(f.system.preferences.values, stored);
        updates->setBannerVisible(false);
        f.check(*updates, answer);
        QVERIFY(!updates->isBannerVisible());
        updates->checkForUpdates(false, false);
        QVERIFY(updates->isChecking());
    }

    void takesEveryStatusFrom200To299_data()
    {
        QTest::addColumn<int>("status");
        QTest::newRow("200") << 200;
        QTest::newRow("204") << 204;
        QTest::newRow("299") << 299;
    }

    void takesEveryStatusFrom200To299()
    {
        QFETCH(int, status);
        UpdateFixture f;
        const auto updates
            = f.checked(answerOf(updates::encodedUpdate(sampleUpdate(u"2.0"_s)), status));
        QVERIFY(updates->availableUpdate());
    }

    void takesABodyOf65536Bytes()
    {
        UpdateFixture f;
        const auto updates = f.checked(answerOf(manifestOfSize(65536)));
        QVERIFY(updates->availableUpdate());
    }

    void aCheckDuringAnotherDoesNothing()
    {
        UpdateFixture f;
        const auto updates = f.checked(answerOf(QByteArray("<html>")));
        updates->checkForUpdates(true, false);
        QVERIFY(updates->isChecking());
        const QSignalSpy changes(updates.get(), &UpdateController::changed);
        bool ended = false;
        updates->checkForUpdates(true, true, [&] { ended = true; });
        QVERIFY(ended);
        QCOMPARE(f.fetches(), 2);
        QCOMPARE(updates->message(), failureText);
        QVERIFY(changes.isEmpty());
        f.system.scheduler.settle();
        QVERIFY(!updates->isChecking());
    }

    void theUsersNextCheckClearsTheMessage()
    {
        UpdateFixture f;
        const auto updates = f.checked(answerOf(QByteArray("<html>")));
        updates->checkForUpdates(true, true);
        QVERIFY(!updates->message());
        QVERIFY(updates->isChecking());
    }

    void tellsWhenACheckHasEnded()
    {
        UpdateFixture f;
        const auto updates = f.controller();
        bool ended = false;
        updates->checkForUpdates(true, false, [&] { ended = !updates->isChecking(); });
        QVERIFY(!ended);
        f.system.scheduler.settle();
        QVERIFY(ended);
    }

    void anAnswerAfterItsEndIsDropped()
    {
        UpdateFixture f;
        auto updates = f.controller();
        f.system.manifestFetcher.answers = {answerOf(sampleUpdate(u"2.0"_s))};
        bool ended = false;
        updates->checkForUpdates(true, true, [&] { ended = true; });
        f.system.scheduler.runBackground();
        updates.reset();
        f.system.scheduler.settle();
        QVERIFY(!ended);
        QVERIFY(f.system.preferences.written.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestUpdateCheck)
#include "tst_update_check.moc"
