#pragma once

#include "platform/scheduler.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace zorvane::platform
{

/**
 * A few threads that run background jobs, urgent ones first, otherwise in order. The threads start
 * with the first job.
 */
class Executor
{
public:
    explicit Executor(unsigned threadCount);
    ~Executor();
    Executor(const Executor &) = delete;
    Executor &operator=(const Executor &) = delete;

    void add(Priority priority, std::function<void()> job);
    /** Waits for jobs that have begun and drops the others, now and later. Not from a job. */
    void stop();

private:
    void run();

    const unsigned m_threadCount;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_urgent;
    std::deque<std::function<void()>> m_utility;
    std::vector<std::thread> m_threads;
    bool m_stopping = false;
};

/** One thread that runs jobs in order, and all of them: its end waits for the last. */
class ThreadQueue final : public SerialQueue
{
public:
    explicit ThreadQueue(const char *label);
    ~ThreadQueue() override;

    void add(std::function<void()> job) override;

private:
    void run(const std::string &label);

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_jobs;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace zorvane::platform
