#include "app/records/blocked_application_json.h"

#include "tests/records/sample_records.h"

#include <limits>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::records;
using samples::application;
using samples::fullApplication;
using samples::identity;

namespace
{

/** A list of one record with the five required keys, and @p more keys after them. */
QByteArray listWith(const QByteArray &more = {})
{
    return R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"A","bundleIdentifier":"b",)"
           R"("signingIdentifier":"s","path":"/A.app")"
        + (more.isEmpty() ? QByteArray() : "," + more) + "}]";
}

/** The same list with the text @p value as the JSON of key @p key. */
QByteArray listWithRequired(const QByteArray &key, const QByteArray &value)
{
    QByteArray text = listWith();
    const qsizetype start = text.indexOf("\"" + key + "\":") + key.size() + 3;
    const qsizetype end = text.indexOf('"', start + 1) + 1;
    return text.replace(start, end - start, value);
}

BlockedApplication onlyRecord(const QByteArray &text)
{
    const auto list = decodedApplications(text);
    return list && list->size() == 1 ? list->first() : BlockedApplication();
}

} // namespace

class TestBlockedApplicationJson : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anOlderRecordDecodesWithItsOptionalFieldsAbsent()
    {
        const BlockedApplication record = onlyRecord(listWith());
        BlockedApplication expected;
        expected.id = QUuid(u"{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}"_s);
        expected.name = u"A"_s;
        expected.bundleIdentifier = u"b"_s;
        expected.signingIdentifier = u"s"_s;
        expected.path = u"/A.app"_s;
        QCOMPARE(record, expected);
        QVERIFY(isStale(record));
    }

    void anEmptyListDecodes()
    {
        for (const QByteArray text : {"[]", " \t\r\n[ ]\n", "\xEF\xBB\xBF[]"}) {
            const auto list = decodedApplications(text);
            QVERIFY(list && list->isEmpty());
        }
    }

    void aMissingOrNullRequiredKeyFailsTheWholeList()
    {
        for (const QByteArray key :
            {"id", "name", "bundleIdentifier", "signingIdentifier", "path"}) {
            QByteArray missing = listWith().replace("\"" + key + "\"", "\"other\"");
            QVERIFY2(!decodedApplications(missing), key.constData());
            QVERIFY2(!decodedApplications(listWithRequired(key, "null")), key.constData());
            QVERIFY2(!decodedApplications(listWithRequired(key, "1")), key.constData());
            QVERIFY2(!decodedApplications(listWithRequired(key, "[\"x\"]")), key.constData());
            missing.chop(1);
            QVERIFY2(!decodedApplications(missing + "," + listWith().sliced(1)), key.constData());
        }
    }

    void unreadableListsGiveNothing_data()
    {
        QTest::addColumn<QByteArray>("text");

        const auto row
            = [](const char *name, const QByteArray &text) { QTest::newRow(name) << text; };
        row("empty text", {});
        row("object on top", "{}");
        row("text on top", "\"[]\"");
        row("two arrays", "[][]");
        row("NUL after the value", listWith() + '\0');
        row("cut short", listWith().chopped(1));
        row("element is no object", "[1]");
        row("unquoted key", listWith("x:1"));
        row("version as text", listWith(R"("inspectionVersion":"5")"));
        row("version as truth value", listWith(R"("inspectionVersion":true)"));
        row("version with a fraction", listWith(R"("inspectionVersion":5.5)"));
        row("version beyond 64 bits", listWith(R"("inspectionVersion":9223372036854775808)"));
        row("version rounding to 2^63", listWith(R"("inspectionVersion":9223372036854775807.0)"));
        row("version beyond a double", listWith(R"("inspectionVersion":1e400)"));
        row("number ending in its point", listWith(R"("inspectionVersion":5.)"));
        row("number beginning with its point", listWith(R"("inspectionVersion":.5e1)"));
        row("number with a plus sign", listWith(R"("inspectionVersion":+5)"));
        row("team of a wrong type", listWith(R"("teamIdentifier":5)"));
        row("icon without padding", listWith(R"("iconData":"QUI")"));
        row("icon with a line break", listWith(R"("iconData":"QUJD\n")"));
        row("icon as an array", listWith(R"("iconData":[65])"));
        row("identity without identifier",
            listWith(R"("auxiliaryCodeIdentities":[{"teamIdentifier":"x"}])"));
        row("identities as an object", listWith(R"("auxiliaryCodeIdentities":{})"));
        row("identity as text", listWith(R"("auxiliaryCodeIdentities":["x"])"));
        row("older list with a null", listWith(R"("auxiliarySigningIdentifiers":["x",null])"));
        row("lone surrogate", listWithRequired("name", R"("\ud83d")"));
        row("surrogate before a letter", listWithRequired("name", R"("\ud83dx")"));
        row("second half of a pair alone", listWithRequired("name", R"("\ude00")"));
        row("bad hexadecimal escape", listWithRequired("name", R"("\u00g0")"));
        row("unknown escape", listWithRequired("name", R"("\q")"));
        row("raw line break in a text", listWithRequired("name", "\"a\nb\""));
        row("invalid UTF-8", listWithRequired("name", "\"a\xFFz\""));
        row("a surrogate as UTF-8", listWithRequired("name", "\"\xED\xA0\x80\""));
        row("UUID in braces",
            listWithRequired("id", R"("{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}")"));
        row("UUID after a blank",
            listWithRequired("id", R"(" E621E1F8-C36C-495A-93FC-0C247A3E6E5F")"));
        row("UUID with a tail",
            listWithRequired("id", R"("E621E1F8-C36C-495A-93FC-0C247A3E6E5Fxyz")"));
        row("UUID with a wrong digit",
            listWithRequired("id", R"("G621E1F8-C36C-495A-93FC-0C247A3E6E5F")"));
        row("UUID without hyphens",
            listWithRequired("id", R"("E621E1F8C36C495A93FC0C247A3E6E5F0000")"));
        row("empty UUID", listWithRequired("id", R"("")"));
        row("UTF-16", QByteArray("\xFF\xFE[\0]\0", 6));
    }

    void unreadableListsGiveNothing()
    {
        QFETCH(QByteArray, text);
        QVERIFY(!decodedApplications(text));
    }

    void versionsAreIntegersHoweverWritten_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qint64>("version");

        for (const char *five : {"5", "5.0", "5e0", "50E-1", "0.5e1"})
            QTest::newRow(five) << QByteArray(five) << Q_INT64_C(5);
        QTest::newRow("negative zero") << QByteArray("-0") << Q_INT64_C(0);
        QTest::newRow("negative zero with a fraction") << QByteArray("-0.0") << Q_INT64_C(0);
        QTest::newRow("rounded to a double") << QByteArray("1.0000000000000000001") << Q_INT64_C(1);
        QTest::newRow("smallest") << QByteArray("-9223372036854775808")
                                  << std::numeric_limits<qint64>::min();
        QTest::newRow("largest") << QByteArray("9223372036854775807")
                                 << std::numeric_limits<qint64>::max();
    }

    void versionsAreIntegersHoweverWritten()
    {
        QFETCH(QByteArray, text);
        QFETCH(qint64, version);
        const auto record = onlyRecord(listWith("\"inspectionVersion\":" + text));
        QCOMPARE(record.inspectionVersion, std::optional(version));
    }

    void nullIsAbsent()
    {
        const auto record = onlyRecord(
            listWith(R"("teamIdentifier":null,"inspectionVersion":null,"iconData":null,)"
                     R"("auxiliaryCodeIdentities":null,"auxiliarySigningIdentifiers":null)"));
        QCOMPARE(record, onlyRecord(listWith()));
        QVERIFY(!record.name.isEmpty());
    }

    void emptyIsPresent()
    {
        const auto record = onlyRecord(listWith(R"("teamIdentifier":"","iconData":"",)"
                                                R"("auxiliaryCodeIdentities":[],)"
                                                R"("auxiliarySigningIdentifiers":[])"));
        QCOMPARE(record.teamIdentifier, std::optional(QString()));
        QCOMPARE(record.iconData, std::optional(QByteArray()));
        QVERIFY(record.auxiliaryCodeIdentities && record.auxiliaryCodeIdentities->isEmpty());
        QVERIFY(
            record.auxiliarySigningIdentifiers && record.auxiliarySigningIdentifiers->isEmpty());
    }

    void theFirstOfTwoEqualKeysWins()
    {
        QCOMPARE(onlyRecord(listWith(R"("name":"B")")).name, u"A"_s);
        QCOMPARE(onlyRecord(listWith(R"("name":5)")).name, u"A"_s);
    }

    void unknownKeysAreIgnored()
    {
        const auto record = onlyRecord(
            listWith(R"("x":{"deep":[true,null,"z"]},"\u0078":1,"teamIdentifier":"T")"));
        QCOMPARE(record.teamIdentifier, std::optional(u"T"_s));
    }

    void keysMayBeEscaped()
    {
        const auto record = onlyRecord(listWith(R"("team\u0049dentifier":"T")"));
        QCOMPARE(record.teamIdentifier, std::optional(u"T"_s));
    }

    void escapesInTextsAreRead()
    {
        const auto record
            = onlyRecord(listWithRequired("name", R"("\u0041\/\b\f\n\r\t\"\\\ud83d\ude00")"));
        QCOMPARE(record.name, u"A/\b\f\n\r\t\"\\😀"_s);
        QCOMPARE(onlyRecord(listWithRequired("name", R"("\u0000")")).name, QString(QChar(u'\0')));
    }

    void aUuidMayBeNilOrInLowerCase()
    {
        const QByteArray lower = R"("e621e1f8-c36c-495a-93fc-0c247a3e6e5f")";
        QCOMPARE(onlyRecord(listWithRequired("id", lower)).id, onlyRecord(listWith()).id);
        const QByteArray nil = R"("00000000-0000-0000-0000-000000000000")";
        QVERIFY(decodedApplications(listWithRequired("id", nil)));
    }

    void decodingTrimsNothing()
    {
        const auto record = onlyRecord(listWith(
            R"("auxiliaryCodeIdentities":[{"signingIdentifier":"x","teamIdentifier":"  T "},)"
            R"({"signingIdentifier":"y"}])"));
        const QList<CodeIdentity> expected{identity(u"x"_s, u"  T "_s), identity(u"y"_s)};
        QCOMPARE(record.auxiliaryCodeIdentities.value_or(QList<CodeIdentity>()), expected);
    }

    void absentFieldsAreNotWritten()
    {
        const QStringList keys = toJson(application()).keys();
        QCOMPARE(keys,
            QStringList(
                {u"bundleIdentifier"_s, u"id"_s, u"name"_s, u"path"_s, u"signingIdentifier"_s}));
        QCOMPARE(toJson(identity(u"x"_s)).keys(), QStringList{u"signingIdentifier"_s});
    }

    void fieldsAreWrittenUnderTheirNames()
    {
        const QJsonObject expected{{u"id"_s, u"E621E1F8-C36C-495A-93FC-0C247A3E6E5F"_s},
            {u"name"_s, u"Tool"_s}, {u"bundleIdentifier"_s, u"com.example.tool"_s},
            {u"signingIdentifier"_s, u"com.example.Tool"_s}, {u"teamIdentifier"_s, u"ABCDE12345"_s},
            {u"auxiliaryCodeIdentities"_s,
                QJsonArray{QJsonObject{{u"signingIdentifier"_s, u"com.example.Tool.helper"_s},
                               {u"teamIdentifier"_s, u"ABCDE12345"_s}},
                    QJsonObject{{u"signingIdentifier"_s, u"com.example.Tool.plain"_s}}}},
            {u"auxiliarySigningIdentifiers"_s, QJsonArray{u"com.example.Tool.older"_s}},
            {u"inspectionVersion"_s, 5}, {u"path"_s, u"/Applications/Tool.app"_s},
            {u"iconData"_s, u"QUJD/w=="_s}};
        QCOMPARE(toJson(fullApplication()), expected);
    }

    void theListIsWrittenWithoutBlanks()
    {
        BlockedApplication record = application();
        record.name = u"é😀\u2028"_s;
        const QByteArray text = encodedApplications({record, fullApplication()});
        QVERIFY(!text.contains(' ') && !text.contains('\n'));
        QVERIFY(text.contains("\"é😀\u2028\""));
        QCOMPARE(encodedApplications({}), QByteArray("[]"));
    }

    void whatIsWrittenIsReadBack()
    {
        BlockedApplication odd = fullApplication();
        odd.name = u"\0\a\b\x1F\x7F\"\\/\u2028é😀"_s;
        odd.teamIdentifier = u""_s;
        odd.auxiliaryCodeIdentities.emplace();
        odd.auxiliarySigningIdentifiers.emplace();
        odd.inspectionVersion = std::numeric_limits<qint64>::min();
        odd.iconData = QByteArray();
        const QList<BlockedApplication> records{application(), fullApplication(), odd};
        const auto read = decodedApplications(encodedApplications(records));
        QVERIFY(read);
        QCOMPARE(*read, records);
    }

    void aBrokenTextDoesNotCostTheList()
    {
        const QString half = u"half a pair: "_s + QChar(0xD83D) + u'x' + QChar(0xDE00);
        BlockedApplication broken = fullApplication();
        broken.name = broken.bundleIdentifier = broken.signingIdentifier = broken.path = half;
        broken.teamIdentifier = half;
        broken.auxiliaryCodeIdentities = {identity(half, half)};
        broken.auxiliarySigningIdentifiers = {half};
        const auto read = decodedApplications(encodedApplications({broken, fullApplication()}));
        QVERIFY(read);
        QVERIFY(read->first().name.startsWith(u"half a pair: "));
        QCOMPARE(read->last(), fullApplication());
    }
};

QTEST_APPLESS_MAIN(TestBlockedApplicationJson)
#include "tst_blocked_application_json.moc"
