#include "platform/simulated/behaviour.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform::simulated;
using zorvane::platform::PlatformError;

namespace
{

/** Single quotes in @p text stand for double ones. */
Behaviour read(QByteArray text)
{
    return readBehaviour(text.replace('\'', '"'), u"system.json"_s);
}

void expectReport(const QString &pattern)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(pattern));
}

} // namespace

class TestBehaviour : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void withoutAnyKeyAllIsWell()
    {
        const Behaviour behaviour = read("{}");
        QCOMPARE(behaviour, standardBehaviour());
        QCOMPARE(behaviour.bundlePath, std::filesystem::path("/Applications/Zorvane.app"));
        QCOMPARE(behaviour.bundleIdentifier, u"dev.kestrelworks.Zorvane"_s);
        QCOMPARE(behaviour.shortVersion, u"1.0.0"_s);
        QCOMPARE(behaviour.build, u"1"_s);
        QCOMPARE(behaviour.applicationGroups, QStringList{u"group.dev.kestrelworks.Zorvane"_s});
        QCOMPARE(behaviour.approval, Approval::Granted);
        QCOMPARE(behaviour.activationDelay, 600ms);
        QVERIFY(!behaviour.rebootNeeded);
        QVERIFY(behaviour.faults.isEmpty());
    }

    void everyKeyIsRead()
    {
        const Behaviour behaviour = read(
            "{ "
            "'bundlePath': '/tmp/Ä/Zorvane.app', 'bundleIdentifier': 'a.b', 'shortVersion': '2.1', "
            "'build': '57', 'applicationGroups': ['x', 'y'], 'approval': 'ask', "
            "'activationDelay': 1.5, 'rebootNeeded': true, "
            "'faults': [{'operation': 'save', 'domain': 'D', 'code': -5, 'description': 'no', "
            "'times': 2}]}");
        QCOMPARE(behaviour.bundlePath, std::filesystem::path("/tmp/Ä/Zorvane.app"));
        QCOMPARE(behaviour.bundleIdentifier, u"a.b"_s);
        QCOMPARE(behaviour.shortVersion, u"2.1"_s);
        QCOMPARE(behaviour.build, u"57"_s);
        QCOMPARE(behaviour.applicationGroups, (QStringList{u"x"_s, u"y"_s}));
        QCOMPARE(behaviour.approval, Approval::Ask);
        QCOMPARE(behaviour.activationDelay, 1500ms);
        QVERIFY(behaviour.rebootNeeded);
        const Fault fault{Operation::Save, PlatformError{u"D"_s, -5, u"no"_s}, 2};
        QCOMPARE(behaviour.faults, QList{fault});
    }

    void nullMeansMissingForWhatABundleMayLack()
    {
        const Behaviour behaviour = read(
            "{'bundleIdentifier': null, 'shortVersion': null, "
            "'build': null, 'applicationGroups': null, 'bundlePath': null, 'approval': null}");
        QCOMPARE(behaviour.bundleIdentifier, std::nullopt);
        QCOMPARE(behaviour.shortVersion, std::nullopt);
        QCOMPARE(behaviour.build, std::nullopt);
        QCOMPARE(behaviour.applicationGroups, std::nullopt);
        QCOMPARE(behaviour.bundlePath, standardBehaviour().bundlePath);
        QCOMPARE(behaviour.approval, Approval::Granted);
    }

    void aBadValueIsReportedAndSpoilsNoOther_data()
    {
        QTest::addColumn<QByteArray>("member");
        QTest::addColumn<QString>("key");

        QTest::newRow("relative path") << "'bundlePath': 'Zorvane.app'"_ba << u"bundlePath"_s;
        QTest::newRow("number as text") << "'shortVersion': 1.0"_ba << u"shortVersion"_s;
        QTest::newRow("group that is no text")
            << "'applicationGroups': ['a', 1]"_ba << u"applicationGroups"_s;
        QTest::newRow("unknown approval") << "'approval': 'maybe'"_ba << u"approval"_s;
        QTest::newRow("negative delay") << "'activationDelay': -1"_ba << u"activationDelay"_s;
        QTest::newRow("endless delay") << "'activationDelay': 1e300"_ba << u"activationDelay"_s;
        QTest::newRow("number for a truth value") << "'rebootNeeded': 1"_ba << u"rebootNeeded"_s;
        QTest::newRow("fault without operation") << "'faults': [{'code': 5}]"_ba << u"faults"_s;
        QTest::newRow("fault of no operation")
            << "'faults': [{'operation': 'delete'}]"_ba << u"faults"_s;
        QTest::newRow("unknown key") << "'aproval': 'ask'"_ba << u"aproval"_s;
    }

    void aBadValueIsReportedAndSpoilsNoOther()
    {
        QFETCH(QByteArray, member);
        QFETCH(QString, key);
        Behaviour expected = standardBehaviour();
        expected.bundleIdentifier = u"other.one"_s;

        expectReport(u"system\\.json: \"%1\" counts as absent: "_s.arg(key));
        QCOMPARE(read("{'bundleIdentifier': 'other.one', " + member + "}"), expected);
    }

    void aDamagedFileIsReportedAndReadAsAbsent_data()
    {
        QTest::addColumn<QByteArray>("text");

        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut off") << QByteArray("{'approval': 'ask'");
        QTest::newRow("no object") << "[]"_ba;
        QTest::newRow("no UTF-8") << QByteArray("{\"build\": \"\xFF\"}");
    }

    void aDamagedFileIsReportedAndReadAsAbsent()
    {
        QFETCH(QByteArray, text);
        expectReport(u"system\\.json holds no JSON object"_s);
        QCOMPARE(read(text), standardBehaviour());
    }

    void aFaultNeedsOnlyItsOperation()
    {
        const Behaviour behaviour
            = read("{'faults': [{'operation': 'load'}, {'operation': 'activate'}]}");
        QCOMPARE(behaviour.faults.size(), 2);
        QCOMPARE(behaviour.faults[0].error.domain, u"NEFilterErrorDomain"_s);
        QCOMPARE(behaviour.faults[0].error.code, 1);
        QCOMPARE(behaviour.faults[0].error.description,
            u"The operation couldn’t be completed. (NEFilterErrorDomain error 1.)"_s);
        QCOMPARE(behaviour.faults[0].times, std::nullopt);
        QCOMPARE(behaviour.faults[1].error.domain, u"OSSystemExtensionErrorDomain"_s);
    }
};

QTEST_GUILESS_MAIN(TestBehaviour)
#include "tst_behaviour.moc"
