#include "sample_updates.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using updates::AppUpdate;
using updates::decodedUpdate;

class TestAppUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAWholeManifest()
    {
        const auto update = decodedUpdate(
            json("{'version':'2.1','build':57,'downloadURL':'https:\\/\\/example.com\\/d',"
                 "'releaseNotes':'Faster.','future':{'a':[1]}}"));
        QVERIFY(update);
        QCOMPARE(update->version, u"2.1"_s);
        QCOMPARE(update->build, qint64(57));
        QCOMPARE(update->downloadURL, u"https://example.com/d"_s);
        QCOMPARE(update->releaseNotes, u"Faster."_s);
    }

    void missingAndNullOptionalFieldsAreAbsent()
    {
        const auto missing = decodedUpdate(json("{'version':'2.1','downloadURL':'https://a/'}"));
        const auto null = decodedUpdate(
            json("{'version':'2.1','downloadURL':'https://a/','build':null,'releaseNotes':null}"));
        QVERIFY(missing && null);
        QCOMPARE(*missing, *null);
        QVERIFY(!missing->build);
        QVERIFY(!missing->releaseNotes);
    }

    void keepsTheAddressToTheLetter()
    {
        const auto update = decodedUpdate(
            json("{'version':'1','downloadURL':'HTTPS://User@Example.com:443/%41'}"));
        QVERIFY(update);
        QCOMPARE(update->downloadURL, u"HTTPS://User@Example.com:443/%41"_s);
    }

    void refusesWhatIsNoManifest_data()
    {
        QTest::addColumn<QByteArray>("text");
        const auto row
            = [](const char *name, const char *text) { QTest::newRow(name) << QByteArray(text); };
        row("nothing", "");
        row("no JSON", "<html>");
        row("cut off", json("{'version':'2.1','downloadURL':'https://a/'"));
        row("more behind it", json("{'version':'2.1','downloadURL':'https://a/'}{}"));
        row("a list", json("[{'version':'2.1','downloadURL':'https://a/'}]"));
        row("no version", json("{'downloadURL':'https://a/'}"));
        row("null version", json("{'version':null,'downloadURL':'https://a/'}"));
        row("a number as version", json("{'version':2.1,'downloadURL':'https://a/'}"));
        row("no address", json("{'version':'2.1'}"));
        row("a list as address", json("{'version':'2.1','downloadURL':['https://a/']}"));
        row("an empty address", json("{'version':'2.1','downloadURL':''}"));
        row("an address that is none", json("{'version':'2.1','downloadURL':'https://a:b/'}"));
        row("a text as build", json("{'version':'2.1','downloadURL':'https://a/','build':'57'}"));
        row("a fraction as build",
            json("{'version':'2.1','downloadURL':'https://a/','build':5.5}"));
        row("a huge build",
            json("{'version':'2.1','downloadURL':'https://a/','build':9223372036854775808}"));
        row("true as build", json("{'version':'2.1','downloadURL':'https://a/','build':true}"));
        row("a number as notes",
            json("{'version':'2.1','downloadURL':'https://a/','releaseNotes':1}"));
    }

    void refusesWhatIsNoManifest()
    {
        QFETCH(QByteArray, text);
        QVERIFY(!decodedUpdate(text));
    }

    void isWrittenWithoutItsAbsentFields()
    {
        QCOMPARE(updates::encodedUpdate(sampleUpdate(u"2.1"_s)),
            json("{'downloadURL':'https://kestrelworks.dev/zorvane','version':'2.1'}"));
    }

    void survivesWritingAndReading()
    {
        AppUpdate update = sampleUpdate(u"2.1 „β“"_s, 9007199254740993);
        update.releaseNotes = u""_s;
        QCOMPARE(decodedUpdate(updates::encodedUpdate(update)), update);
    }

    void comparesAllFields()
    {
        const AppUpdate update = sampleUpdate(u"2.1"_s, 57);
        AppUpdate other = update;
        QCOMPARE(other, update);
        other.build.reset();
        QVERIFY(other != update);
        other = update;
        other.releaseNotes = u""_s;
        QVERIFY(other != update);
        other = update;
        other.downloadURL += u'/';
        QVERIFY(other != update);
        other = update;
        other.version = u"2.10"_s;
        QVERIFY(other != update);
    }

    void announcesItselfByItsNotesOrAStandardSentence()
    {
        AppUpdate update = sampleUpdate(u"2.1"_s);
        QCOMPARE(update.announcement(), u"A new version is ready to download."_s);
        update.releaseNotes = u""_s;
        QCOMPARE(update.announcement(), u""_s);
        update.releaseNotes = u"Faster."_s;
        QCOMPARE(update.announcement(), u"Faster."_s);
    }
};

QTEST_GUILESS_MAIN(TestAppUpdate)
#include "tst_app_update.moc"
