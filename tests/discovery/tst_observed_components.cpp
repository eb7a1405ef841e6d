#include "app/observed_components.h"
#include "app/sample_applications.h"
#include "inspection/process_matching.h"
#include "sample_processes.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using app::ObservedComponents;
using inspection::DiscoveredNetworkProcess;
using records::BlockedApplication;

namespace
{

QList<BlockedApplication> randomApplications(QRandomGenerator &random)
{
    QList<BlockedApplication> result;
    for (int i = 0; i < 8; ++i) {
        const QString letter(QChar(u'a' + i));
        auto application = sampleApplication(letter, u"com.example."_s + letter);
        application.auxiliaryCodeIdentities = {{u"helper%1"_s.arg(random.bounded(6)), u"TEAM"_s}};
        result.append(application);
    }
    return result;
}

QList<DiscoveredNetworkProcess> randomProcesses(
    QRandomGenerator &random, const QList<BlockedApplication> &applications)
{
    QList<DiscoveredNetworkProcess> result;
    for (int i = 0; i < 30; ++i) {
        auto process = sampleProcess(
            u"helper%1"_s.arg(random.bounded(9)), u"TEAM"_s, 800'000'000 - random.bounded(100));
        const auto &application = applications.at(random.bounded(int(applications.size())));
        if (random.bounded(2) == 0)
            process.executablePath = application.path + u"/x%1"_s.arg(i);
        result.append(process);
    }
    return result;
}

ObservedComponents make(const QList<BlockedApplication> &applications,
    const QList<DiscoveredNetworkProcess> &processes, const ObservedComponents &last = {})
{
    return {applications, processes, inspection::processesOfEach(applications, processes), last};
}

} // namespace

class TestObservedComponents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theyAreWhatTheBuilderMakesOfAllProcesses()
    {
        ObservedComponents components;
        for (quint32 seed = 1; seed <= 100; ++seed) {
            QRandomGenerator random(seed);
            const auto applications = randomApplications(random);
            const auto processes = randomProcesses(random, applications);
            components = make(applications, processes, components);
            for (const BlockedApplication &application : applications) {
                QVERIFY(components.of(application) != nullptr);
                QCOMPARE(*components.of(application),
                    inspection::networkComponents(application, processes));
            }
        }
    }

    void whatDidNotChangeIsShared()
    {
        const QList applications{
            sampleApplication(u"A"_s, u"a"_s), sampleApplication(u"B"_s, u"b"_s)};
        const auto before = make(applications, {sampleProcess(u"a"_s)});
        const auto after
            = make(applications, {sampleProcess(u"a"_s), sampleProcess(u"b"_s)}, before);
        QVERIFY(after.of(applications[0])->isSharedWith(*before.of(applications[0])));
        QVERIFY(!after.of(applications[1])->isSharedWith(*before.of(applications[1])));
        QCOMPARE(after.of(applications[1])->constFirst().lastSeenAt, 800'000'000.0);
    }

    void twoRecordsWithOneIdAreBothKnown()
    {
        const auto first = sampleApplication(u"A"_s, u"a"_s);
        auto second = sampleApplication(u"B"_s, u"b"_s);
        second.id = first.id;
        const auto before = make({first, second}, {});
        QCOMPARE(before.of(first)->constFirst().name, u"A"_s);
        QCOMPARE(before.of(second)->constFirst().name, u"B"_s);
        const auto after = make({first, second}, {}, before);
        QVERIFY(after.of(first)->isSharedWith(*before.of(first)));
        QVERIFY(after.of(second)->isSharedWith(*before.of(second)));
    }

    void whatIsAddedIsKnownBesideTheOthers()
    {
        const auto first = sampleApplication(u"A"_s, u"a"_s);
        auto renewed = first;
        renewed.name = u"B"_s;
        auto components = make({first}, {});
        components.add(make({renewed}, {}));
        QCOMPARE(components.of(first)->constFirst().name, u"A"_s);
        QCOMPARE(components.of(renewed)->constFirst().name, u"B"_s);
    }

    void aRecordThatIsAnotherByNowIsNotKnown()
    {
        auto application = sampleApplication(u"A"_s, u"a"_s);
        const auto components = make({application}, {});
        application.name = u"B"_s;
        QVERIFY(components.of(application) == nullptr);
        QVERIFY(components.of(sampleApplication(u"C"_s, u"c"_s)) == nullptr);
    }
};

QTEST_APPLESS_MAIN(TestObservedComponents)
#include "tst_observed_components.moc"
