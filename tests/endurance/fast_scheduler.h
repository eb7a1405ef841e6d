#pragma once

#include "platform/scheduler.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <QDateTime>
#include <utility>

namespace zorvane::tests
{

/** Another scheduler, with real threads and a real event loop, whose waits are over at once. The
 * time of day is the test's. */
class FastScheduler final : public platform::Scheduler
{
public:
    explicit FastScheduler(std::unique_ptr<platform::Scheduler> scheduler)
        : m_scheduler(std::move(scheduler))
    {
    }

    /** Lets the time of day go on. */
    void pass(std::chrono::milliseconds duration) { m_passed += duration.count(); }

    void shutDown() override { m_scheduler->shutDown(); }
    [[nodiscard]] QDateTime now() const override { return m_start.addMSecs(m_passed); }
    void runInBackground(platform::Priority priority, Job job) override
    {
        m_scheduler->runInBackground(priority, std::move(job));
    }
    void post(Job job) override { m_scheduler->post(std::move(job)); }
    void after(std::chrono::milliseconds delay, Job job) override
    {
        m_scheduler->after(shortened(delay), std::move(job));
    }
    [[nodiscard]] std::unique_ptr<platform::Timer> every(
        std::chrono::milliseconds interval, Job job) override
    {
        return m_scheduler->every(shortened(interval), std::move(job));
    }
    [[nodiscard]] std::unique_ptr<platform::SerialQueue> makeSerialQueue(const char *label) override
    {
        return m_scheduler->makeSerialQueue(label);
    }

private:
    static std::chrono::milliseconds shortened(std::chrono::milliseconds wait)
    {
        constexpr int speed = 5'000;
        return std::max(std::chrono::milliseconds(1), wait / speed);
    }

    std::unique_ptr<platform::Scheduler> m_scheduler;
    const QDateTime m_start = QDateTime::currentDateTimeUtc();
    std::atomic<qint64> m_passed = 0;
};

} // namespace zorvane::tests
