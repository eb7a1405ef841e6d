#include "app/records/code_identity.h"
#include "app/records/own_identifiers.h"
#include "filter/rule_normalization.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::filter;

namespace
{

QStringList normalizedKeys(const QStringList &keys)
{
    return normalizedCodeIdentityKeys(keys, records::ownIdentifiers(u"dev.kestrelworks.Zorvane"_s));
}

QString keyFor(const QString &signingIdentifier, const QString &team = u"ABC"_s)
{
    return records::identityKey({signingIdentifier, team});
}

} // namespace

class TestRuleNormalization : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsFirstOfEqualKeysAndDropsMalformedOnes()
    {
        QCOMPARE(normalizedKeys(
                     {QString(), u"abc"_s, u".c2lnbg=="_s, u"QUJD.c2lnbg=="_s, u"QUJD.c2lnbg=="_s}),
            QStringList({u".c2lnbg=="_s, u"QUJD.c2lnbg=="_s}));
    }

    void singleKeys_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("canonical");
        const QString dropped;
        QTest::newRow("no full stop") << u""_s << dropped;
        QTest::newRow("no signing identifier") << u"QUJD."_s << dropped;
        QTest::newRow("only a full stop") << u"."_s << dropped;
        QTest::newRow("a second full stop") << u"QUJD.c2lnbg==.x"_s << dropped;
        QTest::newRow("team trimmed") << u"ICBBQkMK.c2lnbg=="_s << u"QUJD.c2lnbg=="_s;
        QTest::newRow("team of blanks") << u"ICAg.c2lnbg=="_s << u".c2lnbg=="_s;
        QTest::newRow("spare bits") << u"QUJD.c2lnbh=="_s << u"QUJD.c2lnbg=="_s;
        QTest::newRow("zero-width space trimmed") << u"4oCLQUJD.c2lnbg=="_s << u"QUJD.c2lnbg=="_s;
        QTest::newRow("signing identifier not trimmed") << u"QUJD.IHNpZ24="_s << u"QUJD.IHNpZ24="_s;
        QTest::newRow("line break in the key") << u"QUJD\n.c2lnbg=="_s << dropped;
        QTest::newRow("padding missing") << u"QUJD.c2lnbg"_s << dropped;
        QTest::newRow("team is no UTF-8") << u"/w==.c2lnbg=="_s << dropped;
        QTest::newRow("signing identifier is no UTF-8") << u"QUJD./w=="_s << dropped;
        QTest::newRow("non-ASCII text") << u"QUJD.c2lnbgé="_s << dropped;
    }

    void singleKeys()
    {
        QFETCH(QString, key);
        QFETCH(QString, canonical);
        QCOMPARE(
            normalizedKeys({key}), canonical.isEmpty() ? QStringList() : QStringList{canonical});
    }

    void dropsOwnIdentifiersAndKeepsTheirNeighbours()
    {
        QCOMPARE(normalizedKeys({keyFor(u"dev.kestrelworks.Zorvane"_s),
                     keyFor(u"dev.kestrelworks.Zorvane.tool"_s),
                     keyFor(u"dev.kestrelworks.ZorvaneX"_s)}),
            QStringList{keyFor(u"dev.kestrelworks.ZorvaneX"_s)});
    }

    void dropsTheRunningBundlesIdentifierToo()
    {
        const QStringList own = records::ownIdentifiers(u"org.example.Copy.FilterExtension"_s);
        QCOMPARE(normalizedCodeIdentityKeys(
                     {keyFor(u"org.example.Copy"_s), keyFor(u"org.example.Copy.Agent"_s)}, own),
            QStringList());
    }

    void keysAreNotSorted()
    {
        const QStringList keys{keyFor(u"b"_s), keyFor(u"a"_s), keyFor(u"c"_s)};
        QCOMPARE(normalizedKeys(keys), keys);
    }

    void normalizingTwiceChangesNothingMore()
    {
        const QStringList once = normalizedKeys({u"ICBBQkMK.c2lnbh=="_s, u".c2lnbg=="_s});
        QCOMPARE(normalizedKeys(once), once);
    }

    void keepsApplicationPathsOnce()
    {
        QCOMPARE(normalizedApplicationPaths({u"/Applications/A.app"_s, u"/Applications/./A.app"_s,
                     u"/tmp/b"_s, u"/Applications/C.APP"_s}),
            QStringList{u"/Applications/A.app"_s});
    }

    void resolvesParentFoldersInPathsAndDropsTrailingSlashes()
    {
        QCOMPARE(normalizedApplicationPaths({u"/x/../Applications/B.app/"_s, u"/A b.app"_s}),
            QStringList({u"/Applications/B.app"_s, u"/A b.app"_s}));
    }
};

QTEST_APPLESS_MAIN(TestRuleNormalization)
#include "tst_rule_normalization.moc"
