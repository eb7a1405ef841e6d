#include "fakes/fake_services.h"
#include "inspection/discovered_processes.h"
#include "sample_processes.h"

#include <atomic>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <thread>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using namespace zorvane::inspection;

namespace
{

const QString group = u"group.dev.kestrelworks.Zorvane"_s;
const QString recordsKey = u"discoveredNetworkProcesses.v2"_s;
const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);
const ReferenceSeconds cutOff = referenceSeconds(now) - 2'592'000;

struct Fixture {
    FakeEntitlements entitlements;
    FakeSuites suites;
    DiscoveredProcesses reader{{entitlements, suites}};

    void store(const QVariant &value, const QString &domain = group)
    {
        suites.domains[domain].insert(recordsKey, value);
    }

    [[nodiscard]] QStringList loaded() const
    {
        QStringList identifiers;
        for (const auto &process : reader.loadDiscoveredProcesses(now))
            identifiers.append(process.signingIdentifier);
        return identifiers;
    }
};

DiscoveredNetworkProcess seenAt(const QString &identifier, ReferenceSeconds time)
{
    return sampleProcess(identifier, u"TEAM"_s, time);
}

} // namespace

class TestDiscoveredProcesses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void referenceTimeBeginsWith2001()
    {
        QCOMPARE(referenceSeconds(QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC)), 0.0);
        QCOMPARE(
            referenceSeconds(QDateTime(QDate(2001, 1, 2), QTime(0, 0, 0, 500), Qt::UTC)), 86400.5);
    }

    void keepsARecordAtTheCutOffAndDropsOneASecondOlder()
    {
        Fixture f;
        f.store(encodedProcesses({seenAt(u"older"_s, cutOff - 1), seenAt(u"at"_s, cutOff)}));
        QCOMPARE(f.loaded(), QStringList{u"at"_s});
    }

    void ordersMostRecentFirstAndKeepsEqualTimes()
    {
        Fixture f;
        f.store(encodedProcesses({seenAt(u"a"_s, cutOff + 10), seenAt(u"b"_s, cutOff + 20),
            seenAt(u"c"_s, cutOff + 10)}));
        QCOMPARE(f.loaded(), QStringList({u"b"_s, u"a"_s, u"c"_s}));
    }

    void roundTripsEveryField()
    {
        auto process = seenAt(u"com.example.Tool"_s, 776534400.25);
        process.sourceApplicationIdentifier = u"com.example.App"_s;
        process.sourceApplicationTeamIdentifier = u"T"_s;
        process.executablePath = u"/Applications/A.app/Contents/MacOS/Tool"_s;
        process.connectionCount = std::numeric_limits<qint64>::max();
        QCOMPARE(decodedProcesses(encodedProcesses({process})), QList{process});
        QVERIFY(encodedProcesses({seenAt(u"x"_s, 776534400)}).contains("\"lastSeenAt\":776534400"));
    }

    void aTimeBeyondReachIsWrittenSoThatItCanBeReadAgain()
    {
        DiscoveredNetworkProcess process = seenAt(u"far"_s, 799999079999900099000.5);
        process.firstSeenAt = -1e300;
        const auto again = decodedProcesses(encodedProcesses({process}));
        QVERIFY(again);
        QCOMPARE(again->constFirst().lastSeenAt, furthestSeconds);
        QCOMPARE(again->constFirst().firstSeenAt, -furthestSeconds);
    }

    void optionalFieldsMayBeMissing()
    {
        const auto decoded
            = decodedProcesses("[{\"signingIdentifier\":\"x\",\"firstSeenAt\":1,\"lastSeenAt\":2.5,"
                               "\"connectionCount\":3,\"teamIdentifier\":null}]");
        QVERIFY(decoded);
        QVERIFY(!decoded->constFirst().teamIdentifier);
        QCOMPARE(decoded->constFirst().lastSeenAt, 2.5);
    }

    void absentFieldsAreNotWritten()
    {
        QCOMPARE(QJsonDocument::fromJson(encodedProcesses({sampleProcess(u"x"_s, std::nullopt)}))
                     .array()
                     .first()
                     .toObject()
                     .keys(),
            QStringList(
                {u"connectionCount"_s, u"firstSeenAt"_s, u"lastSeenAt"_s, u"signingIdentifier"_s}));
    }

    void ofARepeatedTimeTheFirstCountsForOrderAndValue()
    {
        const auto decoded = decodedMostRecentFirst(
            R"([{"signingIdentifier":"a","firstSeenAt":0,"lastSeenAt":1,"lastSeenAt":9,"connectionCount":1},)"
            R"({"signingIdentifier":"b","firstSeenAt":0,"lastSeenAt":5,"connectionCount":1}])");
        QVERIFY(decoded);
        QCOMPARE(decoded->size(), 2);
        QCOMPARE(decoded->constFirst().signingIdentifier, u"b"_s);
        QCOMPARE(decoded->constLast().lastSeenAt, 1.0);
    }

    void anyIncompleteRecordMakesAllUnreadable_data()
    {
        QTest::addColumn<QByteArray>("record");
        const auto row = [](const char *name, const char *record) {
            QTest::newRow(name) << QByteArray(record);
        };
        row("no signing identifier", R"({"firstSeenAt":1,"lastSeenAt":1,"connectionCount":1})");
        row("no first time", R"({"signingIdentifier":"x","lastSeenAt":1,"connectionCount":1})");
        row("no last time", R"({"signingIdentifier":"x","firstSeenAt":1,"connectionCount":1})");
        row("no count", R"({"signingIdentifier":"x","firstSeenAt":1,"lastSeenAt":1})");
        row("time as text",
            R"({"signingIdentifier":"x","firstSeenAt":"2025-08-10T00:00:00Z","lastSeenAt":1,"connectionCount":1})");
        row("last time as text",
            R"({"signingIdentifier":"x","firstSeenAt":1,"lastSeenAt":"1","connectionCount":1})");
        row("last time null at first",
            R"({"signingIdentifier":"x","firstSeenAt":1,"lastSeenAt":null,"lastSeenAt":1,"connectionCount":1})");
        row("count with a fraction",
            R"({"signingIdentifier":"x","firstSeenAt":1,"lastSeenAt":1,"connectionCount":1.5})");
        row("count beyond 64 bits",
            R"({"signingIdentifier":"x","firstSeenAt":1,"lastSeenAt":1,"connectionCount":9223372036854775808})");
        row("team of a wrong type",
            R"({"signingIdentifier":"x","teamIdentifier":1,"firstSeenAt":1,"lastSeenAt":1,"connectionCount":1})");
        row("no object", "7");
    }

    void anyIncompleteRecordMakesAllUnreadable()
    {
        QFETCH(QByteArray, record);
        const QByteArray good = encodedProcesses({seenAt(u"good"_s, cutOff + 1)}).chopped(1);
        Fixture f;
        f.store(good + ']');
        QCOMPARE(f.loaded(), QStringList{u"good"_s});
        f.store(good + ',' + record + ']');
        QCOMPARE(f.loaded(), QStringList());
    }

    void everyProblemReadsAsNothing_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("absent") << QVariant();
        QTest::newRow("corrupt") << QVariant(QByteArray("[{\"signing"));
        QTest::newRow("empty") << QVariant(QByteArray());
        QTest::newRow("another type") << QVariant(u"[]"_s);
        QTest::newRow("no array") << QVariant(QByteArray("{}"));
    }

    void everyProblemReadsAsNothing()
    {
        QFETCH(QVariant, value);
        Fixture f;
        if (value.isValid())
            f.store(value);
        QCOMPARE(f.loaded(), QStringList());
    }

    void withoutGroupOrDomainThereIsNothing()
    {
        Fixture f;
        f.store(encodedProcesses({seenAt(u"x"_s, cutOff + 1)}));
        f.suites.refuses = true;
        QCOMPARE(f.loaded(), QStringList());
        f.suites.refuses = false;
        f.entitlements.groups = std::nullopt;
        QCOMPARE(f.loaded(), QStringList());
        f.entitlements.groups = QStringList{group};
        QCOMPARE(f.loaded(), QStringList{u"x"_s});
    }

    void resolvesTheApplicationGroup_data()
    {
        QTest::addColumn<QStringList>("groups");
        QTest::addColumn<QString>("resolved");
        QTest::newRow("with a team in front, second") << QStringList{u"group.other"_s,
            u"ABC.group.dev.kestrelworks.Zorvane"_s} << u"ABC.group.dev.kestrelworks.Zorvane"_s;
        QTest::newRow("the first that contains it")
            << QStringList{u"x"_s, group, u"Y."_s + group} << group;
        QTest::newRow("none contains it") << QStringList{u"first"_s, u"second"_s} << u"first"_s;
        QTest::newRow("empty") << QStringList() << QString();
    }

    void resolvesTheApplicationGroup()
    {
        QFETCH(QStringList, groups);
        QFETCH(QString, resolved);
        Fixture f;
        f.entitlements.groups = groups;
        QCOMPARE(f.reader.resolveApplicationGroup().value_or(QString()), resolved);
    }

    void withoutEntitlementThereIsNoGroup()
    {
        Fixture f;
        f.entitlements.groups = std::nullopt;
        QVERIFY(!f.reader.resolveApplicationGroup());
    }

    void everyLoadReadsTheDomainAnew()
    {
        Fixture f;
        f.store(encodedProcesses({seenAt(u"x"_s, cutOff + 1)}));
        QCOMPARE(f.loaded(), QStringList{u"x"_s});
        f.store(encodedProcesses({seenAt(u"y"_s, cutOff + 1)}));
        QCOMPARE(f.loaded(), QStringList{u"y"_s});
        QCOMPARE(f.suites.opened, QStringList({group, group}));
    }

    void whatWasWrittenSinceTheDomainWasOpenedIsRead()
    {
        // The made-up domain shows nothing before it is brought up to date.
        Fixture f;
        f.store(encodedProcesses({seenAt(u"x"_s, cutOff + 1)}));
        QVERIFY(!f.suites.open(group)->contains(recordsKey));
        QCOMPARE(f.loaded(), QStringList{u"x"_s});
    }

    void neverDoTwoReadOrDecodeAtOnce()
    {
        FakeEntitlements entitlements;
        FakeSuites suites;
        const DiscoveredProcesses one({entitlements, suites});
        const DiscoveredProcesses other({entitlements, suites});
        std::atomic<int> readers = 0;
        std::atomic<bool> overlapped = false;
        const auto use = [&](const QByteArray &) {
            if (++readers > 1)
                overlapped = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            --readers;
        };
        suites.whenOpened = [&] { use({}); };
        std::vector<std::thread> threads;
        for (const DiscoveredProcesses *reader : {&one, &other}) {
            threads.emplace_back([reader, &use] {
                for (int i = 0; i < 25; ++i)
                    reader->readStoredBytes(use);
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QVERIFY(!overlapped);
        QCOMPARE(suites.opened.size(), 50);
    }

    void knowsForHowLongItsSelectionHolds()
    {
        const ReferenceSeconds time = referenceSeconds(now);
        const auto recent = recentProcesses(
            encodedProcesses({seenAt(u"old"_s, cutOff - 10), seenAt(u"older"_s, cutOff - 20),
                seenAt(u"newer"_s, cutOff + 20), seenAt(u"new"_s, cutOff + 10)}),
            time);
        QVERIFY(recent.holdAt(time));
        QVERIFY(recent.holdAt(time + 10));
        QVERIFY(!recent.holdAt(time + 10.5));
        QVERIFY(recent.holdAt(time - 9.5));
        QVERIFY(!recent.holdAt(time - 10));
    }
};

QTEST_APPLESS_MAIN(TestDiscoveredProcesses)
#include "tst_discovered_processes.moc"
