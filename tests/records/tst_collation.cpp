#include "app/records/collation.h"

#include <algorithm>
#include <QStringList>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::records;

namespace
{

const QLocale english(QLocale::English, QLocale::UnitedStates);
const QLocale turkish(QLocale::Turkish, QLocale::Turkey);

bool sortAlike(const QString &a, const QString &b, const QLocale &locale)
{
    const NameOrder precedes(locale);
    return !precedes(a, b) && !precedes(b, a);
}

} // namespace

class TestCollation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesSortAsAPersonExpects_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");

        QTest::newRow("accent after the bare letter") << u"e"_s << u"é"_s;
        QTest::newRow("accent beside its letter") << u"é"_s << u"z"_s;
        QTest::newRow("empty first") << QString() << u"a"_s;
        QTest::newRow("punctuation before letters") << u"_a"_s << u"a"_s;
        QTest::newRow("digits before letters") << u"1"_s << u"a"_s;
        QTest::newRow("digits are no numbers") << u"10"_s << u"9"_s;
        QTest::newRow("letter case does not count") << u"a"_s << u"B"_s;
    }

    void namesSortAsAPersonExpects()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        for (const QLocale &locale : {english, QLocale::c(), QLocale::system()}) {
            const NameOrder precedes(locale);
            QVERIFY(precedes(first, second));
            QVERIFY(!precedes(second, first));
        }
    }

    void letterCaseAloneMakesNoOrder()
    {
        QVERIFY(sortAlike(u"Tool"_s, u"TOOL"_s, english));
        QVERIFY(sortAlike(u"Tool"_s, u"TOOL"_s, QLocale::c()));
    }

    void theDottedCapitalIsALetterCaseInTurkishOnly()
    {
        QVERIFY(sortAlike(u"i"_s, u"İ"_s, turkish));
        QVERIFY(!sortAlike(u"i"_s, u"İ"_s, english));
    }

    void aStableSortKeepsTheOrderOfNamesThatSortAlike()
    {
        QStringList names{u"b"_s, u"TOOL"_s, u"a"_s, u"tool"_s, u"Tool"_s};
        std::ranges::stable_sort(names, NameOrder(english));
        QCOMPARE(names, QStringList({u"a"_s, u"b"_s, u"TOOL"_s, u"tool"_s, u"Tool"_s}));
    }

    void containingIgnoresLetterCase()
    {
        const QString denied = u"permission denied"_s;
        QVERIFY(containsIgnoringCase(
            u"Operation failed: PERMISSION DENIED by policy"_s, denied, english));
        QVERIFY(
            containsIgnoringCase(u"move to /applications first"_s, u"/Applications"_s, english));
        QVERIFY(!containsIgnoringCase(u"permission  denied"_s, denied, english));
        QVERIFY(!containsIgnoringCase(u"abc"_s, QString(), english));
        QVERIFY(!containsIgnoringCase(QString(), u"a"_s, english));
    }

    void containingFollowsTheLettersOfTheLocale()
    {
        const QString denied = u"permission denied"_s;
        QVERIFY(!containsIgnoringCase(u"PERMISSION DENIED"_s, denied, turkish));
        QVERIFY(containsIgnoringCase(u"permİssİon denİed"_s, denied, turkish));
    }
};

QTEST_APPLESS_MAIN(TestCollation)
#include "tst_collation.moc"
