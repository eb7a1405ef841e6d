#include "fakes/fake_scheduler.h"

#include <algorithm>

namespace zorvane::tests
{

using std::chrono::milliseconds;

class FakeScheduler::FakeTimer final : public platform::Timer
{
public:
    FakeTimer(FakeScheduler &scheduler, milliseconds wantedInterval, Job wantedJob)
        : interval(wantedInterval)
        , due(scheduler.m_elapsed + wantedInterval)
        , job(std::move(wantedJob))
        , m_scheduler(scheduler)
    {
        m_scheduler.m_timers.append(this);
    }
    ~FakeTimer() override { m_scheduler.m_timers.removeOne(this); }

    milliseconds interval;
    milliseconds due;
    Job job;

private:
    FakeScheduler &m_scheduler;
};

class FakeScheduler::FakeQueue final : public platform::SerialQueue
{
public:
    explicit FakeQueue(FakeScheduler &scheduler)
        : m_scheduler(scheduler)
    {
        m_scheduler.m_queues.append(m_jobs);
    }
    ~FakeQueue() override
    {
        while (!m_jobs->empty())
            runFirst(*m_jobs);
    }

    void add(std::function<void()> job) override
    {
        m_jobs->push_back(std::move(job));
        m_scheduler.m_background.emplace_back([jobs = m_jobs] { runFirst(*jobs); });
    }

private:
    static void runFirst(std::deque<Job> &jobs)
    {
        if (jobs.empty())
            return;
        const Job job = std::move(jobs.front());
        jobs.pop_front();
        job();
    }

    FakeScheduler &m_scheduler;
    std::shared_ptr<std::deque<Job>> m_jobs = std::make_shared<std::deque<Job>>();
};

void FakeScheduler::runInBackground(platform::Priority priority, Job job)
{
    m_priorities.append(priority);
    m_background.push_back(std::move(job));
}

void FakeScheduler::after(milliseconds delay, Job job)
{
    m_delayed.append({m_elapsed + delay, std::move(job)});
}

std::unique_ptr<platform::Timer> FakeScheduler::every(milliseconds interval, Job job)
{
    return std::make_unique<FakeTimer>(*this, interval, std::move(job));
}

std::unique_ptr<platform::SerialQueue> FakeScheduler::makeSerialQueue(const char *)
{
    return std::make_unique<FakeQueue>(*this);
}

void FakeScheduler::shutDown()
{
    m_background.clear();
    m_posted.clear();
    m_delayed.clear();
}

void FakeScheduler::kill()
{
    for (const auto &queue : m_queues) {
        if (const auto jobs = queue.lock())
            jobs->clear();
    }
    shutDown();
}

FakeScheduler::Job FakeScheduler::takeBackgroundJob(qsizetype position)
{
    const auto found = m_background.begin() + position;
    Job job = std::move(*found);
    m_background.erase(found);
    return job;
}

void FakeScheduler::runBackgroundJob(qsizetype position)
{
    const Job job = takeBackgroundJob(position);
    job();
}

void FakeScheduler::runBackground()
{
    std::deque<Job> jobs;
    jobs.swap(m_background);
    for (const Job &job : jobs)
        job();
}

void FakeScheduler::runPosted()
{
    std::deque<Job> jobs;
    jobs.swap(m_posted);
    for (const Job &job : jobs)
        job();
}

void FakeScheduler::runFirstPosted()
{
    const Job job = std::move(m_posted.front());
    m_posted.pop_front();
    job();
}

void FakeScheduler::settle()
{
    while (!m_background.empty() || !m_posted.empty()) {
        runBackground();
        runPosted();
    }
}

void FakeScheduler::advance(milliseconds duration, const std::function<void()> &then)
{
    const milliseconds end = m_elapsed + duration;
    while (true) {
        const auto delayed = std::ranges::min_element(m_delayed, {}, &Delayed::due);
        const auto timer = std::ranges::min_element(
            m_timers, {}, [](const FakeTimer *each) { return each->due; });
        const bool hasDelayed = delayed != m_delayed.end() && delayed->due <= end;
        const bool hasTimer = timer != m_timers.end() && (*timer)->due <= end;
        if (!hasDelayed && !hasTimer)
            break;
        const bool delayedFirst = hasDelayed && (!hasTimer || delayed->due <= (*timer)->due);
        const milliseconds due = delayedFirst ? delayed->due : (*timer)->due;
        m_now = m_now.addMSecs((due - m_elapsed).count());
        m_elapsed = due;
        if (delayedFirst) {
            const Job job = std::move(delayed->job);
            m_delayed.erase(delayed);
            job();
        } else {
            (*timer)->due += (*timer)->interval;
            const Job job = (*timer)->job;
            job();
        }
        then();
    }
    m_now = m_now.addMSecs((end - m_elapsed).count());
    m_elapsed = end;
}

} // namespace zorvane::tests
