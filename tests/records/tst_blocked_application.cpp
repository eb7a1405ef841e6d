#include "app/records/blocked_application.h"

#include "app/records/own_identifiers.h"
#include "tests/records/sample_records.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::records;
using samples::application;
using samples::fullApplication;
using samples::identity;

namespace
{

/** The record and copies of it, each with another of its ten fields changed. */
QList<BlockedApplication> variations()
{
    const BlockedApplication full = fullApplication();
    QList<BlockedApplication> result(11, full);
    result[1].id = QUuid();
    result[2].name += u'x';
    result[3].bundleIdentifier += u'x';
    result[4].signingIdentifier += u'x';
    result[5].teamIdentifier.reset();
    result[6].auxiliaryCodeIdentities.reset();
    result[7].auxiliarySigningIdentifiers.reset();
    result[8].inspectionVersion.reset();
    result[9].path += u'x';
    result[10].iconData.reset();
    return result;
}

} // namespace

class TestBlockedApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalityTakesInAllTenFields()
    {
        const auto records = variations();
        for (qsizetype i = 0; i < records.size(); ++i) {
            for (qsizetype j = 0; j < records.size(); ++j)
                QCOMPARE(records[i] == records[j], i == j);
        }
    }

    void hashTakesInAllTenFields()
    {
        const auto records = variations();
        for (const BlockedApplication &record : records.sliced(1))
            QVERIFY(qHash(record) != qHash(records.first()));
        QCOMPARE(qHash(fullApplication()), qHash(records.first()));
    }

    void aRecordIsStaleUnlessMadeByTheCurrentInspection_data()
    {
        QTest::addColumn<bool>("hasIdentities");
        QTest::addColumn<int>("version");
        QTest::addColumn<bool>("stale");

        QTest::newRow("neither") << false << -1 << true;
        QTest::newRow("no identities") << false << 5 << true;
        QTest::newRow("no version") << true << -1 << true;
        QTest::newRow("older") << true << 4 << true;
        QTest::newRow("newer") << true << 6 << true;
        QTest::newRow("current, identities empty") << true << 5 << false;
    }

    void aRecordIsStaleUnlessMadeByTheCurrentInspection()
    {
        QFETCH(bool, hasIdentities);
        QFETCH(int, version);
        BlockedApplication record = application();
        if (hasIdentities)
            record.auxiliaryCodeIdentities.emplace();
        if (version >= 0)
            record.inspectionVersion = version;
        QTEST(isStale(record), "stale");
    }

    void primaryIdentityWithABlankTeamHasNone()
    {
        BlockedApplication record = application();
        record.teamIdentifier = u" \t\n"_s;
        QCOMPARE(primaryCodeIdentity(record), identity(u"com.example.Tool"_s));
        QVERIFY(identityKey(primaryCodeIdentity(record)).startsWith(u'.'));
    }

    void primaryIdentityHasItsTeamTrimmed()
    {
        BlockedApplication record = application();
        record.teamIdentifier = u" ABCDE12345\n"_s;
        QCOMPARE(primaryCodeIdentity(record), identity(u"com.example.Tool"_s, u"ABCDE12345"_s));
    }

    void blockingLeavesOutInterpretersAndCodeWithoutATeam()
    {
        BlockedApplication record = fullApplication();
        record.auxiliaryCodeIdentities = {identity(u"z.helper"_s, u"T"_s),
            identity(u"Python3"_s, u"T"_s), identity(u"SH"_s, u"T"_s), identity(u"a.plain"_s),
            identity(u"python3.11"_s, u"T"_s)};
        const QList<CodeIdentity> expected{identity(u"com.example.Tool"_s, u"ABCDE12345"_s),
            identity(u"z.helper"_s, u"T"_s), identity(u"python3.11"_s, u"T"_s)};
        QCOMPARE(blockingCodeIdentities(record), expected);
    }

    void blockingKeepsThePrimaryIdentityThoughItIsAnInterpreter()
    {
        BlockedApplication record = application();
        record.signingIdentifier = u"python3"_s;
        QCOMPARE(blockingCodeIdentities(record), QList<CodeIdentity>{identity(u"python3"_s)});
    }

    void blockingKeepsRepetitions()
    {
        BlockedApplication record = application();
        record.auxiliaryCodeIdentities = {identity(u"h"_s, u"T"_s), identity(u"h"_s, u"T"_s)};
        QCOMPARE(blockingCodeIdentities(record).size(), 3);
    }

    void allIdentitiesAreUniqueAndInOrder()
    {
        BlockedApplication record = fullApplication();
        const CodeIdentity primary = primaryCodeIdentity(record);
        record.auxiliaryCodeIdentities = {identity(u"z"_s), primary, identity(u"a"_s, u"T"_s),
            identity(u"z"_s), identity(u"z"_s, u"T"_s)};
        const QList<CodeIdentity> expected{
            primary, identity(u"z"_s), identity(u"a"_s, u"T"_s), identity(u"z"_s, u"T"_s)};
        QCOMPARE(allCodeIdentities(record), expected);
        QCOMPARE(allSigningIdentifiers(record),
            QStringList({u"com.example.Tool"_s, u"z"_s, u"a"_s, u"z"_s}));
    }

    void mergingSortsAndLeavesOutThePrimaryIdentity()
    {
        BlockedApplication record = application();
        record.teamIdentifier = u" T "_s;
        record.auxiliaryCodeIdentities = {identity(u"c"_s), identity(u"a"_s, u"T"_s)};
        const auto merged = mergingObservedIdentities(record,
            {identity(u"b"_s), identity(u"c"_s), identity(u"com.example.Tool"_s, u"T"_s),
                identity(u"com.example.Tool"_s, u" T "_s), identity(u"com.example.Tool"_s)});
        const QList<CodeIdentity> expected{identity(u"a"_s, u"T"_s), identity(u"b"_s),
            identity(u"c"_s), identity(u"com.example.Tool"_s),
            identity(u"com.example.Tool"_s, u" T "_s)};
        QVERIFY(merged.auxiliaryCodeIdentities);
        QCOMPARE(*merged.auxiliaryCodeIdentities, expected);
    }

    void mergingKeepsTheOtherFields()
    {
        const BlockedApplication record = fullApplication();
        BlockedApplication merged = mergingObservedIdentities(record, {identity(u"new"_s)});
        QVERIFY(!merged.auxiliarySigningIdentifiers);
        QCOMPARE(merged.inspectionVersion, std::optional<qint64>(5));
        merged.auxiliaryCodeIdentities = record.auxiliaryCodeIdentities;
        merged.auxiliarySigningIdentifiers = record.auxiliarySigningIdentifiers;
        QCOMPARE(merged, record);
    }

    void mergingTheSameIdentityTwiceEqualsMergingItOnce()
    {
        const QList<CodeIdentity> observed{identity(u"com.example.Agent"_s, u"T"_s)};
        const auto once = mergingObservedIdentities(fullApplication(), observed);
        QCOMPARE(mergingObservedIdentities(once, observed), once);
    }

    void mergingNothingNewKeepsTheOrderOfIdentitiesThatSortAlike()
    {
        QList<CodeIdentity> identities;
        for (int i = 0; i < 40; ++i)
            identities << identity(u"same"_s, i % 2 == 0 ? u""_s : u"x%1"_s.arg(i));
        for (int i = 0; i < 40; ++i)
            identities << identity(u"twin%1"_s.arg(i % 20))
                       << identity(u"twin%1"_s.arg(i % 20), u""_s);
        const auto once = mergingObservedIdentities(application(), identities);
        QCOMPARE(mergingObservedIdentities(once, {}), once);
        QCOMPARE(mergingObservedIdentities(once, identities), once);
    }

    void mergingThePrimaryIdentityOnlyClearsWhatIsStale()
    {
        BlockedApplication record = fullApplication();
        record.inspectionVersion = 4;
        const auto merged = mergingObservedIdentities(record, {primaryCodeIdentity(record)});
        BlockedApplication expected = record;
        expected.inspectionVersion = 5;
        expected.auxiliarySigningIdentifiers.reset();
        QCOMPARE(merged, expected);
    }

    void mergingNothingIntoABareRecordGivesAnEmptyList()
    {
        const auto merged = mergingObservedIdentities(application(), {});
        QVERIFY(merged.auxiliaryCodeIdentities);
        QVERIFY(merged.auxiliaryCodeIdentities->isEmpty());
        QVERIFY(!isStale(merged));
    }

    void ownIdentifiersEndAtAFullStop_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<bool>("own");

        QTest::newRow("the product") << u"dev.kestrelworks.Zorvane"_s << true;
        QTest::newRow("below it") << u"dev.kestrelworks.Zorvane.Helper"_s << true;
        QTest::newRow("longer name") << u"dev.kestrelworks.ZorvaneHelper"_s << false;
        QTest::newRow("other letter case") << u"dev.kestrelworks.zorvane"_s << false;
        QTest::newRow("shorter name") << u"dev.kestrelworks"_s << false;
        QTest::newRow("the running bundle") << u"com.example.Fork"_s << true;
        QTest::newRow("its extension") << u"com.example.Fork.FilterExtension"_s << true;
        QTest::newRow("another product") << u"com.example.Tool"_s << false;
        QTest::newRow("empty") << QString() << false;
    }

    void ownIdentifiersEndAtAFullStop()
    {
        QFETCH(QString, identifier);
        QFETCH(bool, own);
        QCOMPARE(isOwnIdentifier(identifier, u"com.example.Fork"_s), own);
        QCOMPARE(isOwnIdentifier(identifier, u"com.example.Fork.FilterExtension"_s), own);
    }

    void withoutABundleIdentifierOnlyTheProductIsOwn()
    {
        for (const auto &bundle : {std::optional<QString>(), std::optional<QString>(u""_s)}) {
            QCOMPARE(ownIdentifiers(bundle), QStringList{u"dev.kestrelworks.Zorvane"_s});
            QVERIFY(!isOwnIdentifier(u""_s, bundle));
            QVERIFY(!isOwnIdentifier(u".Helper"_s, bundle));
        }
    }

    void onlyOneTrailingExtensionNameIsRemoved()
    {
        QCOMPARE(
            ownIdentifiers(u"a.FilterExtension.FilterExtension"_s).last(), u"a.FilterExtension"_s);
    }

    void aRecordIsOwnByItsBundleOrAnySigningIdentifier()
    {
        BlockedApplication record = fullApplication();
        QVERIFY(!isOwnApplication(record, std::nullopt));
        QVERIFY(isOwnApplication(record, u"com.example.tool"_s));
        QVERIFY(isOwnApplication(record, u"com.example.Tool.helper"_s));
        record.auxiliaryCodeIdentities->append(identity(u"dev.kestrelworks.Zorvane.Agent"_s));
        QVERIFY(isOwnApplication(record, std::nullopt));
    }
};

QTEST_APPLESS_MAIN(TestBlockedApplication)
#include "tst_blocked_application.moc"
