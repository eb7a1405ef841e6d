#include "platform/executor.h"

#include <pthread.h>
#include <string>

namespace zorvane::platform
{

namespace
{

/** For debuggers. Only the tail of a long label fits, and it is the telling part. */
void nameThisThread(const std::string &label)
{
    constexpr size_t longestName = 15;
    const std::string name
        = label.size() > longestName ? label.substr(label.size() - longestName) : label;
#ifdef __APPLE__
    pthread_setname_np(name.c_str());
#else
    pthread_setname_np(pthread_self(), name.c_str());
#endif
}

} // namespace

Executor::Executor(unsigned threadCount)
    : m_threadCount(threadCount)
{
}

Executor::~Executor()
{
    stop();
}

void Executor::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_all();
    for (std::thread &thread : m_threads)
        thread.join();
    m_threads.clear();
    m_urgent.clear();
    m_utility.clear();
}

void Executor::add(Priority priority, std::function<void()> job)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopping)
            return;
        (priority == Priority::UserInitiated ? m_urgent : m_utility).push_back(std::move(job));
        if (m_threads.size() < m_threadCount)
            m_threads.emplace_back([this] { run(); });
    }
    m_wake.notify_one();
}

void Executor::run()
{
    nameThisThread("zorvane.worker");
    std::unique_lock lock(m_mutex);
    while (true) {
        m_wake.wait(lock, [this] { return m_stopping || !m_urgent.empty() || !m_utility.empty(); });
        if (m_stopping)
            return;
        auto &jobs = m_urgent.empty() ? m_utility : m_urgent;
        auto job = std::move(jobs.front());
        jobs.pop_front();
        lock.unlock();
        job();
        job = nullptr; // what it held is let go before the lock is taken
        lock.lock();
    }
}

ThreadQueue::ThreadQueue(const char *label)
    : m_thread([this, name = std::string(label)] { run(name); })
{
}

ThreadQueue::~ThreadQueue()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void ThreadQueue::add(std::function<void()> job)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
}

void ThreadQueue::run(const std::string &label)
{
    nameThisThread(label);
    std::unique_lock lock(m_mutex);
    while (true) {
        m_wake.wait(lock, [this] { return m_stopping || !m_jobs.empty(); });
        if (m_jobs.empty())
            return;
        auto job = std::move(m_jobs.front());
        m_jobs.pop_front();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
    }
}

} // namespace zorvane::platform
