#include "app/records/code_identity.h"

#include "tests/records/sample_records.h"

#include <algorithm>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::records;
using samples::identity;

class TestCodeIdentity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keyHasTheTeamFirst()
    {
        const auto tool = CodeIdentity::make(u"com.example.Tool"_s, u"ABCDE12345"_s);
        QCOMPARE(identityKey(tool), u"QUJDREUxMjM0NQ==.Y29tLmV4YW1wbGUuVG9vbA=="_s);
    }

    void keyWithoutTeamBeginsWithTheSeparator()
    {
        const auto tool = CodeIdentity::make(u"com.example.Tool"_s, std::nullopt);
        QCOMPARE(identityKey(tool), u".Y29tLmV4YW1wbGUuVG9vbA=="_s);
    }

    void keyEncodesTheUtf8BytesOfBothTexts()
    {
        QCOMPARE(identityKey(identity(u"é😀"_s, u"ü"_s)), u"w7w=.w6nwn5iA"_s);
    }

    void makingTrimsTheTeamAndNotTheIdentifier()
    {
        const auto made = CodeIdentity::make(u" a "_s, u"\t T\u200B\n"_s);
        QCOMPARE(made, identity(u" a "_s, u"T"_s));
    }

    void makingFromABlankTeamGivesNone()
    {
        QVERIFY(!CodeIdentity::make(u"a"_s, u" \n\u3000"_s).teamIdentifier);
        QVERIFY(!CodeIdentity::make(u"a"_s, u""_s).teamIdentifier);
    }

    void anAbsentTeamEqualsOnlyAnAbsentTeam()
    {
        QCOMPARE(identity(u"a"_s), identity(u"a"_s));
        QVERIFY(identity(u"a"_s) != identity(u"a"_s, u""_s));
        QVERIFY(identity(u"a"_s, u"T"_s) != identity(u"a"_s, u"T "_s));
    }

    void hashTellsAnAbsentTeamFromAnEmptyOne()
    {
        QCOMPARE(qHash(identity(u"a"_s, u"T"_s)), qHash(identity(u"a"_s, u"T"_s)));
        QVERIFY(qHash(identity(u"a"_s)) != qHash(identity(u"a"_s, u""_s)));
    }

    void orderIsByIdentifierThenTeam()
    {
        QList<CodeIdentity> identities{identity(u"b"_s), identity(u"a"_s, u"U"_s),
            identity(u"a"_s, u"T"_s), identity(u"a"_s), identity(u"B"_s, u"Z"_s)};
        std::ranges::sort(identities, precedes);
        const QList<CodeIdentity> expected{identity(u"B"_s, u"Z"_s), identity(u"a"_s),
            identity(u"a"_s, u"T"_s), identity(u"a"_s, u"U"_s), identity(u"b"_s)};
        QCOMPARE(identities, expected);
    }

    void anAbsentTeamSortsAsTheEmptyText()
    {
        QVERIFY(!precedes(identity(u"a"_s), identity(u"a"_s, u""_s)));
        QVERIFY(!precedes(identity(u"a"_s, u""_s), identity(u"a"_s)));
    }

    void duplicatesKeepTheirFirstPlace()
    {
        const QList<CodeIdentity> identities{identity(u"b"_s, u"T"_s), identity(u"a"_s),
            identity(u"b"_s, u"T"_s), identity(u"b"_s), identity(u"a"_s)};
        const QList<CodeIdentity> expected{
            identity(u"b"_s, u"T"_s), identity(u"a"_s), identity(u"b"_s)};
        QCOMPARE(withoutDuplicates(identities), expected);
    }

    void readsKeys_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("normalized");

        QTest::newRow("plain") << u"QUJD.c2lnbg=="_s << u"QUJD.c2lnbg=="_s;
        QTest::newRow("without team") << u".c2lnbg=="_s << u".c2lnbg=="_s;
        QTest::newRow("team trimmed") << u"ICBBQkMK.c2lnbg=="_s << u"QUJD.c2lnbg=="_s;
        QTest::newRow("zero-width space trimmed") << u"4oCLQUJD.c2lnbg=="_s << u"QUJD.c2lnbg=="_s;
        QTest::newRow("blank team becomes none") << u"IA==.c2lnbg=="_s << u".c2lnbg=="_s;
        QTest::newRow("spare bits canonical") << u"QUJD.c2lnbh=="_s << u"QUJD.c2lnbg=="_s;
        QTest::newRow("identifier not trimmed") << u"QUJD.IHNpZ24="_s << u"QUJD.IHNpZ24="_s;
        QTest::newRow("longer name than the product's")
            << u"QUJD.ZGV2Lmtlc3RyZWx3b3Jrcy5ab3J2YW5lWA=="_s
            << u"QUJD.ZGV2Lmtlc3RyZWx3b3Jrcy5ab3J2YW5lWA=="_s;
    }

    void readsKeys()
    {
        QFETCH(QString, key);
        const auto read = identityFromKey(key);
        QVERIFY(read);
        QTEST(identityKey(*read), "normalized");
    }

    void refusesTextsThatAreNoKeys_data()
    {
        QTest::addColumn<QString>("key");

        QTest::newRow("empty") << QString();
        QTest::newRow("no separator") << u"QUJD"_s;
        QTest::newRow("no signing identifier") << u"QUJD."_s;
        QTest::newRow("separator alone") << u"."_s;
        QTest::newRow("a second separator") << u"QUJD.c2lnbg==.x"_s;
        QTest::newRow("line break in the base64") << u"QUJD\n.c2lnbg=="_s;
        QTest::newRow("padding alone") << u"====.c2lnbg=="_s;
        QTest::newRow("missing padding") << u"QUJD.c2lnbg"_s;
        QTest::newRow("team is no UTF-8") << u"/w==.c2lnbg=="_s;
        QTest::newRow("identifier is no UTF-8") << u"QUJD./w=="_s;
        QTest::newRow("no ASCII") << u"QUJDé.c2lnbg=="_s;
    }

    void refusesTextsThatAreNoKeys()
    {
        QFETCH(QString, key);
        QVERIFY(!identityFromKey(key));
    }

    void interpretersAreKnownInAnyLetterCase()
    {
        for (const QString &name :
            {u"bash"_s, u"dash"_s, u"java"_s, u"node"_s, u"perl"_s, u"php"_s, u"python"_s,
                u"python2"_s, u"python3"_s, u"ruby"_s, u"sh"_s, u"swift"_s, u"zsh"_s}) {
            QVERIFY2(isInterpreterName(name), qPrintable(name));
            QVERIFY2(isInterpreterName(name.toUpper()), qPrintable(name));
        }
        QVERIFY(isInterpreterName(u"Python3"_s));
    }

    void interpreterNamesMatchWholly()
    {
        for (const QString &name : {u"python3.11"_s, u"org.python.python"_s, u"nodejs"_s, u"s"_s,
                 u" sh"_s, u"fish"_s, QString()})
            QVERIFY2(!isInterpreterName(name), qPrintable(name));
    }
};

QTEST_APPLESS_MAIN(TestCodeIdentity)
#include "tst_code_identity.moc"
