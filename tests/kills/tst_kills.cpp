#include "desktop_bus/notification_screen.h"
#include "kills/busy_folder.h"
#include "long/times.h"
#include "platform/started_program.h"

#include <array>
#include <csignal>
#include <memory>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const QString program = QStringLiteral(ZORVANE_PROGRAM);
const QString agent = QStringLiteral(ZORVANE_UPDATE_AGENT);

/** Finds the moment of a write by the kills that came too early and too late for it. */
class Aim
{
public:
    /** @p milliseconds: how long a start took to its write when it was left alone. */
    explicit Aim(qint64 milliseconds)
        : m_step(std::max<qint64>(4, milliseconds / 16))
        , m_delay(milliseconds)
    {
    }

    /** How long to wait with the next kill. */
    [[nodiscard]] qint64 delay(int round) const
    {
        return std::max<qint64>(0, m_delay + (round % 5 - 2) * m_step / 2);
    }

    void came(bool tooEarly, bool inBetween)
    {
        m_delay = std::max<qint64>(0, m_delay + (tooEarly ? m_step : -m_step));
        m_early += tooEarly ? 1 : 0;
        m_late += tooEarly ? 0 : 1;
        m_between += inBetween ? 1 : 0;
    }

    /** True if kills came before and after the write: the moment of it was among them. */
    [[nodiscard]] bool hasFound() const { return m_early > 0 && m_late > 0; }
    /** True until there were @p rounds, or a few more where the moment has not been found yet. */
    [[nodiscard]] bool goesOn(int round, int rounds) const
    {
        constexpr int patience = 3;
        return round < rounds || (!hasFound() && round < patience * rounds);
    }
    void report(const char *what) const
    {
        qInfo("%s: %d kills before the write, %d after it, %d left a half-written file beside",
            what, m_early, m_late, m_between);
    }

private:
    const qint64 m_step;
    qint64 m_delay;
    int m_early = 0;
    int m_late = 0;
    int m_between = 0;
};

/** How long it takes until @p isDone; the test's own programs may need answers meanwhile. */
template <typename Condition>
qint64 millisecondsUntil(Condition isDone)
{
    QElapsedTimer timer;
    timer.start();
    static_cast<void>(QTest::qWaitFor(isDone, 60'000));
    return timer.elapsed();
}

void kill(StartedProgram &started)
{
    started.signal(SIGKILL);
    started.exitStatus();
}

} // namespace

/** The whole programs, killed again and again while they write: 25 times, or 500. */
class TestKills : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { shieldStartedPrograms(m_data.path(), m_bus.address()); }

    void aProgramKilledWhileItSavesLeavesTheOldListOrTheNewOne()
    {
        BusyFolder folder;
        Aim aim(untilStage(folder, 1));
        for (int round = 0; aim.goesOn(round, timesIfLong(15)); ++round) {
            folder.storeOldList();
            {
                StartedProgram started(program, folder.path());
                QVERIFY(!started.errorLine().isEmpty());
                QTest::qSleep(int(aim.delay(round)));
                kill(started);
            }
            QVERIFY2(folder.stage() >= 0, "neither list");
            QCOMPARE(folder.damage(), QString());
            aim.came(folder.stage() == 0, folder.wasInterrupted());
        }
        aim.report("saves");
        QVERIFY(aim.hasFound());
        aStartAfterwardsWorksWell(folder);
    }

    void aProgramKilledWhileItMergesLeavesTheOldListOrTheNewOne()
    {
        constexpr int atOnce = 5;
        std::array<BusyFolder, atOnce> folders;
        Aim aim(untilStage(folders.front(), 2));
        for (int round = 0; aim.goesOn(round, timesIfLong(1)); ++round) {
            std::vector<std::pair<std::unique_ptr<StartedProgram>, QDeadlineTimer>> started;
            for (BusyFolder &folder : folders) {
                folder.storeCurrentList();
                auto one = std::make_unique<StartedProgram>(program, folder.path());
                QVERIFY(!one->errorLine().isEmpty());
                started.emplace_back(
                    std::move(one), QDeadlineTimer(aim.delay(int(started.size()))));
            }
            for (size_t i = 0; i < folders.size(); ++i) {
                auto &[one, end] = started.at(i);
                QTest::qSleep(int(end.remainingTime()));
                kill(*one);
                const int stage = folders.at(i).stage();
                QVERIFY2(stage >= 1, "neither list");
                QCOMPARE(folders.at(i).damage(), QString());
                aim.came(stage == 1, folders.at(i).wasInterrupted());
            }
        }
        aim.report("merges");
        QVERIFY(aim.hasFound());
        aStartAfterwardsWorksWell(folders.front());
    }

    void applicationAndAgentKilledWhileBothWriteLoseNothing()
    {
        BusyFolder folder;
        NotificationScreen screen(m_bus);
        Aim aim(untilAnnounced(folder));
        for (int round = 0; aim.goesOn(round, timesIfLong(5)); ++round) {
            const QString version = u"99.%1"_s.arg(round);
            folder.storeOldList();
            folder.announceVersion(version);
            {
                StartedProgram window(program, folder.path());
                StartedProgram unattended(agent, folder.path());
                // The notification is answered from here meanwhile.
                QTest::qWait(int(aim.delay(round)));
                kill(unattended);
                kill(window);
            }
            QVERIFY2(folder.stage() >= 0, "neither list");
            QCOMPARE(folder.damage(), QString());
            const QString announced = folder.announcedVersion();
            QVERIFY2(announced.isEmpty() || announced.contains(version), qPrintable(announced));
            aim.came(announced.isEmpty(), folder.wasInterrupted());
        }
        aim.report("announcements");
        QVERIFY(aim.hasFound());
        aStartAfterwardsWorksWell(folder);
    }

private:
    /** How long a start takes to bring the list to this stage. */
    static qint64 untilStage(BusyFolder &folder, int stage)
    {
        if (stage == 1)
            folder.storeOldList();
        else
            folder.storeCurrentList();
        StartedProgram started(program, folder.path());
        static_cast<void>(started.errorLine());
        return millisecondsUntil([&] { return folder.stage() == stage; });
    }

    static qint64 untilAnnounced(BusyFolder &folder)
    {
        folder.storeOldList();
        folder.announceVersion(u"98"_s);
        StartedProgram window(program, folder.path());
        StartedProgram unattended(agent, folder.path());
        return millisecondsUntil([&] { return !folder.announcedVersion().isEmpty(); });
    }

    /** Neither a lock nor a half-written file is in its way. */
    static void aStartAfterwardsWorksWell(BusyFolder &folder)
    {
        folder.storeOldList();
        StartedProgram started(program, folder.path());
        QTRY_COMPARE_WITH_TIMEOUT(folder.stage(), 1, 20'000);
        QTRY_VERIFY_WITH_TIMEOUT(
            folder.preferences().value(u"protectionRequested"_s).toBool(), 20'000);
        QCOMPARE(folder.damage(), QString());
        QVERIFY(started.isRunning());
    }

    QTemporaryDir m_data;
    PrivateBus m_bus;
};

QTEST_GUILESS_MAIN(TestKills)
#include "tst_kills.moc"
