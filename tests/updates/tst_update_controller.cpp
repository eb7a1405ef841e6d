#include "fakes/fake_platform.h"
#include "sample_updates.h"
#include "updates/update_controller.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
using namespace zorvane::tests;
using updates::AppUpdate;
using updates::UpdateController;

namespace
{

const QString lastCheckKey = u"updates.lastCheckedAt"_s;
const QString cachedManifestKey = u"updates.cachedManifest"_s;
const QString failureText
    = u"Zorvane could not check for updates. Check your internet connection and try again."_s;

struct Fixture {
    FakePlatform system;

    [[nodiscard]] std::unique_ptr<UpdateController> controller()
    {
        return std::make_unique<UpdateController>(UpdateController::Services{system.scheduler,
            system.preferences, system.mainBundle, system.manifestFetcher, system.actions});
    }

    /** A controller after one check by the user that was answered so. */
    [[nodiscard]] std::unique_ptr<UpdateController> checked(
        const platform::ManifestFetcher::Result &answer)
    {
        auto result = controller();
        check(*result, answer);
        return result;
    }

    void check(UpdateController &updates, const platform::ManifestFetcher::Result &answer)
    {
        system.manifestFetcher.answers = {answer};
        updates.checkForUpdates(true, true);
        system.scheduler.settle();
    }

    [[nodiscard]] qsizetype fetches() const { return system.manifestFetcher.requests.size(); }
};

QByteArray manifestOfSize(qsizetype size)
{
    QByteArray body = updates::encodedUpdate(sampleUpdate(u"2.0"_s));
    return body + QByteArray(size - body.size(), ' ');
}

} // namespace

class TestUpdateController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithNothingToTell()
    {
        Fixture f;
        const auto updates = f.controller();
        QVERIFY(!updates->availableUpdate());
        QVERIFY(!updates->isChecking());
        QVERIFY(!updates->message());
        QVERIFY(!updates->isBannerVisible());
        QVERIFY(!updates->availableUpdateForViews().isValid());
        QCOMPARE(f.fetches(), 0);
    }

    void isNewerThanRunning_data()
    {
        QTest::addColumn<QString>("published");
        QTest::addColumn<std::optional<qint64>>("publishedBuild");
        QTest::addColumn<std::optional<QString>>("running");
        QTest::addColumn<std::optional<QString>>("runningBuild");
        QTest::addColumn<bool>("newer");

        using Text = std::optional<QString>;
        using Number = std::optional<qint64>;
        const Text one = u"1"_s;
        QTest::newRow("2.0 against 1.9.3")
            << u"2.0"_s << Number() << Text(u"1.9.3"_s) << one << true;
        QTest::newRow("1.10 against 1.9") << u"1.10"_s << Number() << Text(u"1.9"_s) << one << true;
        QTest::newRow("1.9 against 1.10")
            << u"1.9"_s << Number() << Text(u"1.10"_s) << one << false;
        QTest::newRow("an older version with a higher build")
            << u"1.9"_s << Number(99) << Text(u"1.10"_s) << one << false;
        QTest::newRow("build 58 against 57")
            << u"2.1"_s << Number(58) << Text(u"2.1"_s) << Text(u"57"_s) << true;
        QTest::newRow("build 58 against 58")
            << u"2.1"_s << Number(58) << Text(u"2.1"_s) << Text(u"58"_s) << false;
        QTest::newRow("build 58 against abc")
            << u"2.1"_s << Number(58) << Text(u"2.1"_s) << Text(u"abc"_s) << true;
        QTest::newRow("build 0 against abc")
            << u"2.1"_s << Number(0) << Text(u"2.1"_s) << Text(u"abc"_s) << false;
        QTest::newRow("build 0 against -1")
            << u"2.1"_s << Number(0) << Text(u"2.1"_s) << Text(u"-1"_s) << true;
        QTest::newRow("build 58 against none")
            << u"2.1"_s << Number(58) << Text(u"2.1"_s) << Text() << true;
        QTest::newRow("the same version without a build")
            << u"2.1"_s << Number() << Text(u"2.1"_s) << Text(u"57"_s) << false;
        QTest::newRow("a version of equal value")
            << u"2.01"_s << Number(58) << Text(u"2.1"_s) << Text(u"57"_s) << true;
        QTest::newRow("any version against none") << u"0.1"_s << Number() << Text() << one << true;
        QTest::newRow("0 against none") << u"0"_s << Number() << Text() << one << false;
    }

    void isNewerThanRunning()
    {
        QFETCH(QString, published);
        QFETCH(std::optional<qint64>, publishedBuild);
        QFETCH(std::optional<QString>, running);
        QFETCH(std::optional<QString>, runningBuild);
        QFETCH(bool, newer);
        Fixture f;
        f.system.mainBundle.version = running;
        f.system.mainBundle.build = runningBuild;
        const AppUpdate update = sampleUpdate(published, publishedBuild);
        const auto updates = f.checked(answerOf(update));
        QCOMPARE(updates->availableUpdate(), newer ? std::optional(update) : std::nullopt);
        QCOMPARE(updates->isBannerVisible(), newer);
    }

    void asksForTheManifestAsStated()
    {
        Fixture f;
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
        Fixture f;
        const QByteArray body = "\xEF\xBB\xBF { \"version\" : \"2.0\", \"downloadURL\":"
                                "\"https://www.kestrelworks.dev/d\", \"unknown\": 1.50 }\n";
        const auto updates = f.checked(answerOf(body));
        QCOMPARE(f.system.preferences.data(cachedManifestKey), body);
        QCOMPARE(f.system.preferences.date(lastCheckKey), f.system.scheduler.now());
    }

    void tellsTheUserOfANewerRelease()
    {
        Fixture f;
        const auto updates = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        QCOMPARE(updates->message(), u"Zorvane 2.0 is available."_s);
        const auto forViews = updates->availableUpdateForViews().value<AppUpdate>();
        QCOMPARE(forViews.version, u"2.0"_s);
    }

    void tellsTheUserThatThereIsNone_data()
    {
        QTest::addColumn<std::optional<QString>>("running");
        QTest::addColumn<QString>("message");
        QTest::newRow("1.0") << std::optional(u"1.0"_s)
                             << u"You\u2019re up to date. Zorvane 1.0 is the latest version."_s;
        QTest::newRow("unknown") << std::optional<QString>()
                                 << u"You\u2019re up to date. Zorvane  is the latest version."_s;
    }

    void tellsTheUserThatThereIsNone()
    {
        QFETCH(std::optional<QString>, running);
        Fixture f;
        f.system.mainBundle.version = running;
        const auto updates = f.checked(answerOf(sampleUpdate(u"0"_s)));
        QTEST(updates->messageForViews(), "message");
        QVERIFY(!updates->isBannerVisible());
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
        Fixture f;
        f.system.preferences.values.insert(
            lastCheckKey, f.system.scheduler.now().addMSecs(-millisecondsAgo));
        const auto updates = f.controller();
        updates->checkForUpdates(force, false);
        f.system.scheduler.settle();
        QTEST(int(f.fetches()), "fetches");
    }

    void aLastCheckThatIsNoDateDoesNotBlock()
    {
        Fixture f;
        f.system.preferences.values.insert(lastCheckKey, u"yesterday"_s);
        const auto updates = f.controller();
        updates->checkForUpdates(false, false);
        QCOMPARE(f.fetches(), 1);
    }

    void aSecondCheckWaitsForTheDayAfterASuccess()
    {
        Fixture f;
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
        Fixture f;
        const auto updates = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        const QVariantMap stored = f.system.preferences.values;
        f.system.scheduler.advance(48h);
        f.check(*updates, answer);
        QCOMPARE(updates->message(), failureText);
        QVERIFY(!updates->isChecking());
        QCOMPARE(updates->availableUpdate()->version, u"2.0"_s);
        QVERIFY(updates->isBannerVisible());
        QCOMPARE(f.system.preferences.values, stored);
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
        Fixture f;
        const auto updates
            = f.checked(answerOf(updates::encodedUpdate(sampleUpdate(u"2.0"_s)), status));
        QVERIFY(updates->availableUpdate());
    }

    void takesABodyOf65536Bytes()
    {
        Fixture f;
        const auto updates = f.checked(answerOf(manifestOfSize(65536)));
        QVERIFY(updates->availableUpdate());
    }

    void anAutomaticCheckIsSilent()
    {
        Fixture f;
        const auto updates = f.checked(answerOf(QByteArray("<html>")));
        f.system.manifestFetcher.answers = {answerOf(sampleUpdate(u"2.0"_s))};
        updates->checkForUpdates(true, false);
        f.system.scheduler.settle();
        QCOMPARE(updates->message(), failureText);
        QVERIFY(updates->isBannerVisible());
        updates->checkForUpdates(true, false);
        f.system.scheduler.settle();
        QCOMPARE(updates->message(), failureText);
        QVERIFY(f.system.log.lines.isEmpty());
    }

    void aCheckDuringAnotherDoesNothing()
    {
        Fixture f;
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
        Fixture f;
        const auto updates = f.checked(answerOf(QByteArray("<html>")));
        updates->checkForUpdates(true, true);
        QVERIFY(!updates->message());
        QVERIFY(updates->isChecking());
    }

    void tellsWhenACheckHasEnded()
    {
        Fixture f;
        const auto updates = f.controller();
        bool ended = false;
        updates->checkForUpdates(true, false, [&] { ended = !updates->isChecking(); });
        QVERIFY(!ended);
        f.system.scheduler.settle();
        QVERIFY(ended);
    }

    void aHiddenBannerComesBackWithTheNextCheck()
    {
        Fixture f;
        const auto updates = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        updates->setBannerVisible(false);
        QVERIFY(updates->availableUpdate());
        QVERIFY(f.controller()->isBannerVisible());
        f.check(*updates, answerOf(sampleUpdate(u"2.0"_s)));
        QVERIFY(updates->isBannerVisible());
    }

    void aReleaseThatIsTakenBackClearsTheBanner()
    {
        Fixture f;
        const auto updates = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        f.check(*updates, answerOf(sampleUpdate(u"1.0"_s)));
        QVERIFY(!updates->availableUpdate());
        QVERIFY(!updates->isBannerVisible());
    }

    void showsTheCachedManifestAtLaunch()
    {
        Fixture f;
        const auto before = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        f.system.preferences.written.clear();
        const auto updates = f.controller();
        QCOMPARE(updates->availableUpdate()->version, u"2.0"_s);
        QVERIFY(updates->isBannerVisible());
        QVERIFY(!updates->message());
        QVERIFY(f.system.preferences.written.isEmpty());
        QCOMPARE(f.fetches(), 1);
    }

    void aCachedManifestThatIsNoLongerNewerShowsNothing()
    {
        Fixture f;
        const auto before = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        f.system.mainBundle.version = u"2.0"_s;
        const auto updates = f.controller();
        QVERIFY(!updates->availableUpdate());
        QVERIFY(!updates->isBannerVisible());
    }

    void ignoresADamagedCachedManifest_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::newRow("cut off") << QVariant(json("{'version':'2.0','downloadURL':'ht"));
        QTest::newRow("incomplete") << QVariant(json("{'version':'2.0'}"));
        QTest::newRow("no data") << QVariant(u"{\"version\":\"2.0\"}"_s);
    }

    void ignoresADamagedCachedManifest()
    {
        QFETCH(QVariant, stored);
        Fixture f;
        f.system.preferences.values.insert(cachedManifestKey, stored);
        const auto updates = f.controller();
        QVERIFY(!updates->availableUpdate());
        QVERIFY(!updates->isBannerVisible());
    }

    void aCachedManifestIsShownAndOpenedWhateverItsAddress()
    {
        Fixture f;
        AppUpdate update = sampleUpdate(u"2.0"_s);
        update.downloadURL = u"http://elsewhere.example/d"_s;
        f.system.preferences.values.insert(cachedManifestKey, updates::encodedUpdate(update));
        const auto updates = f.controller();
        QCOMPARE(updates->availableUpdate(), update);
        QVERIFY(updates->isBannerVisible());
        updates->openDownload();
        QCOMPARE(f.system.actions.calls, QStringList{u"url http://elsewhere.example/d"_s});
    }

    void opensTheDownloadOnlyIfThereIsOne()
    {
        Fixture f;
        const auto updates = f.controller();
        updates->openDownload();
        QVERIFY(f.system.actions.calls.isEmpty());
        f.check(*updates, answerOf(sampleUpdate(u"2.0"_s)));
        updates->openDownload();
        QCOMPARE(f.system.actions.calls, QStringList{u"url https://kestrelworks.dev/zorvane"_s});
    }

    void saysWhichVersionRuns_data()
    {
        QTest::addColumn<std::optional<QString>>("version");
        QTest::addColumn<std::optional<QString>>("build");
        QTest::addColumn<QString>("text");
        using Text = std::optional<QString>;
        QTest::newRow("both") << Text(u"2.1"_s) << Text(u"57"_s) << u"2.1 (57)"_s;
        QTest::newRow("no build") << Text(u"2.1"_s) << Text() << u"2.1"_s;
        QTest::newRow("no version") << Text() << Text(u"57"_s) << u"Unknown (57)"_s;
        QTest::newRow("neither") << Text() << Text() << u"Unknown"_s;
    }

    void saysWhichVersionRuns()
    {
        QFETCH(std::optional<QString>, version);
        QFETCH(std::optional<QString>, build);
        Fixture f;
        f.system.mainBundle.version = version;
        f.system.mainBundle.build = build;
        QTEST(f.controller()->currentVersionText(), "text");
    }

    void anAnswerAfterItsEndIsDropped()
    {
        Fixture f;
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

QTEST_GUILESS_MAIN(TestUpdateController)
#include "tst_update_controller.moc"
