#include "update_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using updates::AppUpdate;

/** What the controller tells of what it knows. */
class TestUpdateController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithNothingToTell()
    {
        UpdateFixture f;
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
        UpdateFixture f;
        f.system.mainBundle.version = running;
        f.system.mainBundle.build = runningBuild;
        const AppUpdate update = sampleUpdate(published, publishedBuild);
        const auto updates = f.checked(answerOf(update));
        QCOMPARE(updates->availableUpdate(), newer ? std::optional(update) : std::nullopt);
        QCOMPARE(updates->isBannerVisible(), newer);
    }

    void tellsTheUserOfANewerRelease()
    {
        UpdateFixture f;
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
        UpdateFixture f;
        f.system.mainBundle.version = running;
        const auto updates = f.checked(answerOf(sampleUpdate(u"0"_s)));
        QTEST(updates->messageForViews(), "message");
        QVERIFY(!updates->isBannerVisible());
    }

    void anAutomaticCheckIsSilent()
    {
        UpdateFixture f;
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

    void aHiddenBannerComesBackWithTheNextCheck()
    {
        UpdateFixture f;
        const auto updates = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        updates->setBannerVisible(false);
        QVERIFY(updates->availableUpdate());
        QVERIFY(f.controller()->isBannerVisible());
        f.check(*updates, answerOf(sampleUpdate(u"2.0"_s)));
        QVERIFY(updates->isBannerVisible());
    }

    void aReleaseThatIsTakenBackClearsTheBanner()
    {
        UpdateFixture f;
        const auto updates = f.checked(answerOf(sampleUpdate(u"2.0"_s)));
        f.check(*updates, answerOf(sampleUpdate(u"1.0"_s)));
        QVERIFY(!updates->availableUpdate());
        QVERIFY(!updates->isBannerVisible());
    }

    void showsTheCachedManifestAtLaunch()
    {
        UpdateFixture f;
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
        UpdateFixture f;
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
        UpdateFixture f;
        f.system.preferences.values.insert(cachedManifestKey, stored);
        const auto updates = f.controller();
        QVERIFY(!updates->availableUpdate());
        QVERIFY(!updates->isBannerVisible());
    }

    void aCachedManifestIsShownAndOpenedWhateverItsAddress()
    {
        UpdateFixture f;
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
        UpdateFixture f;
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
        UpdateFixture f;
        f.system.mainBundle.version = version;
        f.system.mainBundle.build = build;
        QTEST(f.controller()->currentVersionText(), "text");
    }
};

QTEST_GUILESS_MAIN(TestUpdateController)
#include "tst_update_controller.moc"
