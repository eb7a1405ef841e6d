#include "desktop_bus/notification_screen.h"
#include "kills/aim.h"
#include "kills/busy_folder.h"
#include "kills/moment.h"
#include "long/times.h"
#include "platform/started_program.h"

#include <csignal>
#include <deque>
#include <future>
#include <optional>
#include <QElapsedTimer>
#include <QThread>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::tests;

namespace
{

const QString program = QStringLiteral(ZORVANE_PROGRAM);
const QString agent = QStringLiteral(ZORVANE_UPDATE_AGENT);

const std::vector<When> moments{When::Timed, When::AtItsFirst, When::AtTheWrite};

/** So that none of the processors waits while the others' victims start. */
size_t manyAtOnce()
{
    return static_cast<size_t>(QThread::idealThreadCount()) + 1;
}

/** How long it takes until @p isDone, if it ever is; the test's own programs may need answers
 * meanwhile. */
template <typename Condition>
std::optional<qint64> millisecondsUntil(Condition isDone)
{
    QElapsedTimer timer;
    timer.start();
    return QTest::qWaitFor(isDone, 60'000) ? std::optional(timer.elapsed()) : std::nullopt;
}

/** How long it takes, about, when several do what takes one alone so long. */
qint64 amongOthers(qint64 alone)
{
    return alone * 3 / 2;
}

/** False if it ended before, by itself. */
bool kill(StartedProgram &started)
{
    return started.signal(SIGKILL) && started.endsBy(SIGKILL);
}

/** The same for one that ends when it has done all that it had to do. */
bool killUnlessDone(StartedProgram &started)
{
    return kill(started) || started.exitStatus() == 0;
}

} // namespace

/** The whole programs, killed again and again while they write: 30 times, or 600. */
class TestKills : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { shieldStartedPrograms(m_data.path(), m_bus.address()); }

    /** Whatever was half-written: no list was taken for a damaged one. */
    void cleanup() { QCOMPARE(setAsideBy(m_data.path()), QString()); }

    void aProgramKilledWhileItSavesLeavesTheOldListOrTheNewOne()
    {
        std::deque<BusyFolder> folders(manyAtOnce());
        const auto duration = untilStage(folders.front(), 1);
        QVERIFY(duration);
        Aim aim(amongOthers(*duration));
        killOften(folders, aim, timesIfLong(15), moments, [&aim](BusyFolder &folder, When when) {
            folder.storeOldList();
            return faultAfterKill(folder, 0, aim, when);
        });
        aim.report("saves");
        QVERIFY(aim.hasHitWritesOften(timesIfLong(15)));
        aStartAfterwardsWorksWell(folders.front());
    }

    void aProgramKilledWhileItMergesLeavesTheOldListOrTheNewOne()
    {
        // They wait for most of the time.
        constexpr int atOnce = 20;
        std::deque<BusyFolder> folders(size_t(std::min(atOnce, timesIfLong(5))));
        const auto duration = untilStage(folders.front(), 2);
        QVERIFY(duration);
        // Waiting, which takes most of it, takes hardly longer among others.
        Aim aim(*duration * 9 / 8);
        killOften(folders, aim, timesIfLong(5), {When::Timed, When::AtTheWrite},
            [&aim](BusyFolder &folder, When when) {
                folder.storeCurrentList();
                return faultAfterKill(folder, 1, aim, when);
            });
        aim.report("merges");
        QVERIFY(aim.hasHitWritesOften(timesIfLong(5)));
        aStartAfterwardsWorksWell(folders.front());
    }

    void anAgentKilledWhileItWritesLosesNothing()
    {
        std::deque<BusyFolder> folders(manyAtOnce());
        const NotificationScreen screen(m_bus);
        const auto duration = untilAnnounced(folders.front(), {});
        QVERIFY(duration);
        Aim aim(amongOthers(*duration));
        killOften(folders, aim, timesIfLong(5), {When::Timed, When::AtItsFirst},
            [&aim](BusyFolder &folder, When when) {
                folder.storeCurrentList();
                folder.announceVersion(u"99.1"_s);
                if (when != When::Timed)
                    folder.leaveHalfWritten();
                Moment moment(aim.next(), folder, when);
                StartedProgram unattended(agent, folder.path());
                moment.wait();
                if (!killUnlessDone(unattended))
                    return u"it ended by itself"_s;
                const QString announced = folder.announcedVersion();
                aim.came(announced.isEmpty(), folder.wasInterrupted(), when);
                if (!announced.isEmpty() && !announced.contains(u"99.1"_s))
                    return u"announced is "_s + announced;
                return folder.stage() == 1 ? moment.fault() : u"another list"_s;
            });
        aim.report("announcements of the agent alone");
        QVERIFY(aim.hasHitWritesOften(timesIfLong(5)));
        aStartAfterwardsWorksWell(folders.front());
    }

    void applicationAndAgentKilledWhileBothWriteLoseNothing()
    {
        std::deque<BusyFolder> folders(manyAtOnce());
        const NotificationScreen screen(m_bus);
        const auto duration = untilAnnounced(folders.front(), program);
        QVERIFY(duration);
        Aim aim(amongOthers(*duration));
        killOften(folders, aim, timesIfLong(5), moments, [&aim](BusyFolder &folder, When when) {
            folder.storeOldList();
            folder.announceVersion(u"99.1"_s);
            if (when != When::Timed)
                folder.leaveHalfWritten();
            Moment moment(aim.next(), folder, when);
            StartedProgram window(program, folder.path());
            StartedProgram unattended(agent, folder.path());
            moment.wait();
            const bool agentEnded = killUnlessDone(unattended);
            if (!kill(window) || !agentEnded)
                return u"one of them ended by itself"_s;
            const QString announced = folder.announcedVersion();
            aim.came(announced.isEmpty(), folder.wasInterrupted(), when);
            if (!announced.isEmpty() && !announced.contains(u"99.1"_s))
                return u"announced is "_s + announced;
            return folder.stage() >= 0 ? moment.fault() : u"neither list"_s;
        });
        aim.report("announcements");
        QVERIFY(aim.hasHitWritesOften(timesIfLong(5)));
        aStartAfterwardsWorksWell(folders.front());
    }

    void applicationAndAgentKeepWhatTheOtherHasWritten()
    {
        BusyFolder folder;
        const NotificationScreen screen(m_bus);
        for (int round = 0; round < timesIfLong(3); ++round) {
            folder.storeOldList();
            folder.announceVersion(u"99.1"_s);
            const StartedProgram window(program, folder.path());
            const StartedProgram unattended(agent, folder.path());
            QTRY_VERIFY_WITH_TIMEOUT(
                folder.stage() >= 1 && !folder.announcedVersion().isEmpty(), 30'000);
            QCOMPARE(folder.damage(), QString());
        }
    }

private:
    /**
     * Kills @p rounds programs, one at a time in each folder, at @p times in turn whatever the
     * number of folders. @p kill starts one and says what is wrong afterwards.
     */
    template <typename Kill>
    static void killOften(std::deque<BusyFolder> &folders, Aim &aim, int rounds,
        const std::vector<When> &times, Kill kill)
    {
        std::vector<std::future<QString>> killers;
        for (BusyFolder &folder : folders) {
            const auto killer = [&folder, &aim, rounds, times, kill] {
                QString fault;
                while (const auto round = aim.nextRound(rounds)) {
                    fault = kill(folder, times.at(*round % times.size()));
                    if (!fault.isEmpty())
                        break;
                }
                return fault;
            };
            killers.push_back(std::async(std::launch::async, killer));
        }
        for (auto &killer : killers) {
            // Notifications are answered from here meanwhile.
            while (killer.wait_for(0s) != std::future_status::ready)
                QTest::qWait(10);
            const QString fault = killer.get();
            QVERIFY2(fault.isEmpty(), qPrintable(fault));
        }
        QCOMPARE(aim.moments(), times.size());
    }

    /** Kills the program while it brings the list on from @p stage; what is wrong then. */
    static QString faultAfterKill(BusyFolder &folder, int stage, Aim &aim, When when)
    {
        if (when != When::Timed)
            folder.leaveHalfWritten();
        Moment moment(aim.next(), folder, when);
        StartedProgram started(program, folder.path());
        moment.wait();
        if (!kill(started))
            return u"it ended by itself"_s;
        aim.came(folder.stage() == stage, folder.wasInterrupted(), when);
        return folder.stage() >= stage ? moment.fault() : u"neither list"_s;
    }

    /** How long a start takes to bring the list to this stage. */
    static std::optional<qint64> untilStage(BusyFolder &folder, int stage)
    {
        if (stage == 1)
            folder.storeOldList();
        else
            folder.storeCurrentList();
        const StartedProgram started(program, folder.path());
        return millisecondsUntil([&] { return folder.stage() >= stage; });
    }

    /** The same for the agent, with @p beside running, if that is a program. */
    static std::optional<qint64> untilAnnounced(BusyFolder &folder, const QString &beside)
    {
        folder.storeOldList();
        folder.announceVersion(u"98"_s);
        std::optional<StartedProgram> window;
        if (!beside.isEmpty())
            window.emplace(beside, folder.path());
        const StartedProgram unattended(agent, folder.path());
        return millisecondsUntil([&] { return !folder.announcedVersion().isEmpty(); });
    }

    /** Neither a lock nor a half-written file is in its way, and none stays. */
    static void aStartAfterwardsWorksWell(BusyFolder &folder)
    {
        folder.storeOldList();
        folder.leaveHalfWritten();
        const StartedProgram started(program, folder.path());
        QTRY_VERIFY_WITH_TIMEOUT(folder.stage() >= 1, 30'000);
        QTRY_VERIFY_WITH_TIMEOUT(
            folder.preferences().value(u"protectionRequested"_s).toBool(), 30'000);
        QTRY_VERIFY_WITH_TIMEOUT(!folder.hasHalfWritten(), 30'000);
        QCOMPARE(folder.damage(), QString());
        QVERIFY(started.isRunning());
    }

    QTemporaryDir m_data;
    PrivateBus m_bus;
};

QTEST_GUILESS_MAIN(TestKills)
#include "tst_kills.moc"
