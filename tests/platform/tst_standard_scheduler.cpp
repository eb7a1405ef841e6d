#include "platform/main_thread.h"
#include "platform/standard_scheduler.h"

#include <atomic>
#include <future>
#include <mutex>
#include <QElapsedTimer>
#include <QTest>
#include <thread>
#include <vector>

using namespace std::chrono_literals;
using namespace zorvane::platform;

namespace
{

/** An object that answers come back to. */
class Owner
{
public:
    [[nodiscard]] std::weak_ptr<const void> watch() const { return m_lifetime.watch(); }

    int answer = 0;

private:
    Lifetime m_lifetime;
};

} // namespace

class TestStandardScheduler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scheduler = std::make_unique<StandardScheduler>(); }
    void cleanup() { m_scheduler.reset(); }

    void theTimeIsInUtc()
    {
        const QDateTime now = m_scheduler->now();
        QCOMPARE(now.timeSpec(), Qt::UTC);
        QVERIFY(qAbs(now.secsTo(QDateTime::currentDateTimeUtc())) <= 1);
    }

    void postedJobsRunInOrderAndNotBeforeTheCallReturns()
    {
        std::vector<int> order;
        for (int i = 0; i < 100; ++i)
            m_scheduler->post([&order, i] { order.push_back(i); });
        QVERIFY(order.empty());
        QTRY_COMPARE(order.size(), size_t(100));
        QVERIFY(std::is_sorted(order.begin(), order.end()));
    }

    void jobsPostedByJobsWaitForTheNextTurn()
    {
        std::vector<int> order;
        m_scheduler->post([this, &order] {
            m_scheduler->post([&order] { order.push_back(3); });
            order.push_back(1);
        });
        m_scheduler->post([&order] { order.push_back(2); });
        QCoreApplication::processEvents();
        QTRY_COMPARE(order.size(), size_t(3));
        QCOMPARE(order, (std::vector{1, 2, 3}));
    }

    void everyThreadsPostsKeepTheirOrder()
    {
        constexpr int threads = 4;
        constexpr int posts = 500;
        std::vector<std::vector<int>> seen(threads);
        std::vector<std::thread> posting;
        posting.reserve(threads);
        for (int thread = 0; thread < threads; ++thread)
            posting.emplace_back([this, &seen, thread] {
                for (int i = 0; i < posts; ++i)
                    m_scheduler->post([&list = seen[size_t(thread)], i] { list.push_back(i); });
            });
        for (std::thread &thread : posting)
            thread.join();
        for (const auto &list : seen) {
            QTRY_COMPARE(list.size(), size_t(posts));
            QVERIFY(std::is_sorted(list.begin(), list.end()));
        }
    }

    void backgroundWorkRunsElsewhereAndItsResultComesBackHere()
    {
        Owner owner;
        const auto here = std::this_thread::get_id();
        std::thread::id elsewhere;
        runInBackground(
            *m_scheduler, Priority::UserInitiated, owner.watch(),
            [] { return std::make_pair(42, std::this_thread::get_id()); },
            [&](const std::pair<int, std::thread::id> &result) {
                QCOMPARE(std::this_thread::get_id(), here);
                owner.answer = result.first;
                elsewhere = result.second;
            });
        QTRY_COMPARE(owner.answer, 42);
        QVERIFY(elsewhere != here);
    }

    void anAnswerIsDroppedIfItsOwnerDiedWhileTheWorkRan()
    {
        auto owner = std::make_unique<Owner>();
        std::promise<void> gate;
        std::atomic<bool> worked = false;
        bool answered = false;
        runInBackground(
            *m_scheduler, Priority::Utility, owner->watch(),
            [&] {
                gate.get_future().wait();
                worked = true;
                return 1;
            },
            [&](int) { answered = true; });
        owner.reset();
        gate.set_value();
        QTRY_VERIFY(worked);
        drain();
        QVERIFY(!answered);
    }

    void anAnswerIsDroppedIfItsOwnerDiedAfterThePost()
    {
        auto owner = std::make_unique<Owner>();
        bool answered = false;
        const auto answer
            = onMainThread(*m_scheduler, owner->watch(), [&answered](int) { answered = true; });
        std::thread([&answer] { answer(1); }).join();
        owner.reset();
        drain();
        QVERIFY(!answered);
    }

    void anAnswerWithoutArgumentsReachesItsOwner()
    {
        Owner owner;
        const auto answer
            = onMainThread(*m_scheduler, owner.watch(), [&owner] { owner.answer = 1; });
        std::thread([&answer] { answer(); }).join();
        QTRY_COMPARE(owner.answer, 1);
    }

    void aStrongHoldKeepsTheOwnerUntilTheDelayedJobRan()
    {
        auto owner = std::make_shared<Owner>();
        const std::weak_ptr<Owner> weak = owner;
        int seen = 0;
        m_scheduler->after(20ms, [owner, &seen] { seen = ++owner->answer; });
        owner.reset();
        QVERIFY(!weak.expired());
        QTRY_COMPARE(seen, 1);
        QTRY_VERIFY(weak.expired());
    }

    void aDelayedJobRunsOnceAndNotTooEarly()
    {
        QElapsedTimer timer;
        timer.start();
        int runs = 0;
        qint64 elapsed = 0;
        m_scheduler->after(60ms, [&] {
            ++runs;
            elapsed = timer.elapsed();
        });
        QTRY_COMPARE(runs, 1);
        QVERIFY2(elapsed >= 59, qPrintable(QString::number(elapsed)));
        QTest::qWait(100);
        QCOMPARE(runs, 1);
    }

    void aTimerRepeatsUntilItIsDestroyed()
    {
        int runs = 0;
        auto timer = m_scheduler->every(10ms, [&runs] { ++runs; });
        QTRY_VERIFY(runs >= 3);
        timer.reset();
        const int atTheEnd = runs;
        QTest::qWait(50);
        QCOMPARE(runs, atTheEnd);
    }

    void aSerialQueueRunsItsJobsInOrderOneAtATimeElsewhere()
    {
        std::vector<int> order; // not guarded: the queue is
        std::atomic<int> running = 0;
        std::atomic<bool> overlapped = false;
        const auto here = std::this_thread::get_id();
        auto queue = m_scheduler->makeSerialQueue("test");
        for (int i = 0; i < 200; ++i)
            queue->add([&, i] {
                overlapped = overlapped || ++running != 1 || std::this_thread::get_id() == here;
                order.push_back(i);
                --running;
            });
        queue.reset();
        QCOMPARE(order.size(), size_t(200));
        QVERIFY(std::is_sorted(order.begin(), order.end()));
        QVERIFY(!overlapped);
    }

    void theEndOfASerialQueueFinishesAllJobs()
    {
        int finished = 0;
        auto queue = m_scheduler->makeSerialQueue("test");
        for (int i = 0; i < 5; ++i)
            queue->add([&finished] {
                std::this_thread::sleep_for(5ms);
                ++finished;
            });
        queue.reset();
        QCOMPARE(finished, 5);
    }

    void urgentWorkOvertakesUtilityWork()
    {
        // One thread is kept busy to the end, so that the other one's order can be seen.
        std::promise<void> gate;
        std::promise<void> end;
        m_scheduler->runInBackground(
            Priority::UserInitiated, [future = end.get_future().share()] { future.wait(); });
        m_scheduler->runInBackground(
            Priority::UserInitiated, [future = gate.get_future().share()] { future.wait(); });
        std::vector<int> order;
        std::promise<void> done;
        m_scheduler->runInBackground(Priority::Utility, [&] {
            order.push_back(2);
            done.set_value();
        });
        m_scheduler->runInBackground(Priority::UserInitiated, [&] { order.push_back(1); });
        gate.set_value();
        done.get_future().wait();
        end.set_value();
        QCOMPARE(order, (std::vector{1, 2}));
    }

    void theEndWaitsForWorkThatHasBegunAndDropsTheRest()
    {
        constexpr int threads = 2;
        std::promise<void> begun[threads];
        std::atomic<int> finished = 0;
        std::atomic<bool> otherRan = false;
        for (auto &promise : begun)
            m_scheduler->runInBackground(Priority::UserInitiated, [&promise, &finished] {
                promise.set_value();
                std::this_thread::sleep_for(50ms);
                ++finished;
            });
        m_scheduler->runInBackground(Priority::UserInitiated, [&otherRan] { otherRan = true; });
        for (auto &promise : begun)
            promise.get_future().wait();
        m_scheduler->post([&otherRan] { otherRan = true; });
        m_scheduler->after(1ms, [&otherRan] { otherRan = true; });
        m_scheduler.reset();
        QCOMPARE(finished, threads);
        QTest::qWait(20);
        QVERIFY(!otherRan);
    }

private:
    /** Runs what has been posted so far. */
    void drain()
    {
        bool reached = false;
        m_scheduler->post([&reached] { reached = true; });
        QTRY_VERIFY(reached);
    }

    std::unique_ptr<StandardScheduler> m_scheduler;
};

QTEST_GUILESS_MAIN(TestStandardScheduler)
#include "tst_standard_scheduler.moc"
