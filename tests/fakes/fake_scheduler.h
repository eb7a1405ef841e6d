#pragma once

#include "platform/scheduler.h"

#include <deque>
#include <memory>
#include <QList>

namespace zorvane::tests
{

/** Time and threads by hand: nothing runs until a test says so, and all of it on the test's thread.
 */
class FakeScheduler final : public platform::Scheduler
{
public:
    [[nodiscard]] QDateTime now() const override { return m_now; }
    void shutDown() override;
    void runInBackground(platform::Priority priority, Job job) override;
    void post(Job job) override { m_posted.push_back(std::move(job)); }
    void after(std::chrono::milliseconds delay, Job job) override;
    [[nodiscard]] std::unique_ptr<platform::Timer> every(
        std::chrono::milliseconds interval, Job job) override;
    [[nodiscard]] std::unique_ptr<platform::SerialQueue> makeSerialQueue(
        const char *label) override;

    /** Takes the background job at @p position away; it is for the test to run. */
    [[nodiscard]] Job takeBackgroundJob(qsizetype position);
    /** The program is killed: nothing that waits will run, in no queue either. */
    void kill();
    /** Lets the background job at @p position go first, before those that wait longer. */
    void runBackgroundJob(qsizetype position);
    /** Runs the background jobs that wait now; what they post stays posted. */
    void runBackground();
    /** Runs what is posted now on the main thread. */
    void runPosted();
    /** Runs the first job that is posted on the main thread. */
    void runFirstPosted();
    /** Runs everything that does not wait for time. */
    void settle();
    /** Lets time pass, running what falls due at its time and settling after each. */
    void advance(std::chrono::milliseconds duration)
    {
        advance(duration, [this] { settle(); });
    }
    /** The same with @p then in the place of settling. */
    void advance(std::chrono::milliseconds duration, const std::function<void()> &then);
    /** Sets the clock without letting time pass, as a user or a network clock does. */
    void setNow(const QDateTime &now) { m_now = now; }

    [[nodiscard]] qsizetype waitingBackgroundJobs() const { return qsizetype(m_background.size()); }
    [[nodiscard]] qsizetype postedJobs() const { return qsizetype(m_posted.size()); }
    [[nodiscard]] qsizetype delayedJobs() const { return m_delayed.size(); }
    /** Of all background jobs so far. */
    [[nodiscard]] const QList<platform::Priority> &priorities() const { return m_priorities; }
    void forgetPriorities() { m_priorities.clear(); }

private:
    class FakeTimer;
    class FakeQueue;

    struct Delayed {
        std::chrono::milliseconds due;
        Job job;
    };

    QDateTime m_now = QDateTime(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);
    std::chrono::milliseconds m_elapsed{0};
    std::deque<Job> m_background;
    std::deque<Job> m_posted;
    QList<Delayed> m_delayed;
    QList<FakeTimer *> m_timers;
    QList<std::weak_ptr<std::deque<Job>>> m_queues;
    QList<platform::Priority> m_priorities;
};

} // namespace zorvane::tests
