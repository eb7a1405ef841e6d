#include "app/blocked_list.h"
#include "sample_applications.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;

class TestBlockedList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); }

    void sortsByNameIgnoringCase()
    {
        QCOMPARE(
            namesAfterInserting({u"Beta"_s, u"alpha"_s}), QStringList({u"alpha"_s, u"Beta"_s}));
    }

    void sortsAccentedLettersBesideTheirPlainOnes()
    {
        QCOMPARE(namesAfterInserting({u"Zebra"_s, u"Évora"_s, u"Eva"_s}),
            QStringList({u"Eva"_s, u"Évora"_s, u"Zebra"_s}));
    }

    void keepsTheOrderOfEqualNames()
    {
        app::BlockedList list;
        list.insert(sampleApplication(u"same"_s, u"first"_s));
        list.insert(sampleApplication(u"SAME"_s, u"second"_s));
        list.insert(sampleApplication(u"Same"_s, u"third"_s));
        QStringList identifiers;
        for (const auto &application : list.applications())
            identifiers.append(application.signingIdentifier);
        QCOMPARE(identifiers, QStringList({u"first"_s, u"second"_s, u"third"_s}));
    }

    void takesTheSavedListInItsStoredOrder()
    {
        app::BlockedList list;
        QVERIFY(!list.hasLoaded());
        list.load({sampleApplication(u"b"_s, u"b"_s), sampleApplication(u"a"_s, u"a"_s)});
        QVERIFY(list.hasLoaded());
        QCOMPARE(list.applications().constFirst().name, u"b"_s);
    }

    void findsSigningIdentifiersExactly()
    {
        app::BlockedList list;
        list.insert(sampleApplication(u"a"_s, u"com.example.Tool"_s));
        QVERIFY(list.containsSigningIdentifier(u"com.example.Tool"_s));
        QVERIFY(!list.containsSigningIdentifier(u"com.example.tool"_s));
    }

    void replacesRecordsInTheirPlaces()
    {
        app::BlockedList list;
        const auto a = sampleApplication(u"a"_s, u"a"_s);
        const auto b = sampleApplication(u"b"_s, u"b"_s);
        list.load({a, b});
        auto renamed = a;
        renamed.name = u"z"_s;
        list.replace({{a.id, renamed}});
        QCOMPARE(list.applications(), QList({renamed, b}));
    }

    void aReplacementThatSignsAsAnotherListedRecordIsLeftOut_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("then");
        QTest::newRow("as one that stays") << u"ab"_s << u"bb"_s << u"ab"_s;
        QTest::newRow("as one that leaves") << u"ab"_s << u"bc"_s << u"bc"_s;
        QTest::newRow("as one that leaves, before it") << u"ab"_s << u"ca"_s << u"ca"_s;
        QTest::newRow("as each other") << u"ab"_s << u"ba"_s << u"ba"_s;
        QTest::newRow("both as a third") << u"ab"_s << u"cc"_s << u"cb"_s;
        QTest::newRow("as one that cannot leave") << u"abc"_s << u"bcc"_s << u"abc"_s;
    }

    void aReplacementThatSignsAsAnotherListedRecordIsLeftOut()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, then);
        app::BlockedList list;
        QHash<QUuid, records::BlockedApplication> newer;
        QList<records::BlockedApplication> stored;
        for (qsizetype i = 0; i < from.size(); ++i) {
            stored << sampleApplication(from.at(i), from.at(i));
            auto changed = stored.last();
            changed.signingIdentifier = to.at(i);
            newer.insert(changed.id, changed);
        }
        list.load(stored);
        list.replace(newer);
        QString identifiers;
        for (const auto &application : list.applications())
            identifiers += application.signingIdentifier;
        QCOMPARE(identifiers, then);
    }

private:
    static QStringList namesAfterInserting(const QStringList &names)
    {
        app::BlockedList list;
        for (const QString &name : names)
            list.insert(sampleApplication(name, name));
        QStringList result;
        for (const auto &application : list.applications())
            result.append(application.name);
        return result;
    }
};

QTEST_APPLESS_MAIN(TestBlockedList)
#include "tst_blocked_list.moc"
