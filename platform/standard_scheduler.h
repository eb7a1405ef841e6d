#pragma once

#include "platform/scheduler.h"

namespace zorvane::platform
{

class Executor;
class Mailbox;

/**
 * The scheduler of every real system: standard threads, a mutex-guarded mailbox, and Qt's event
 * loop as the main thread's wake-up and clock. Created on the main thread after the application
 * object.
 */
class StandardScheduler final : public Scheduler
{
public:
    StandardScheduler();
    /** Waits for jobs that have begun; drops the others. */
    ~StandardScheduler() override;

    [[nodiscard]] QDateTime now() const override;
    void runInBackground(Priority priority, Job job) override;
    void post(Job job) override;
    void after(std::chrono::milliseconds delay, Job job) override;
    [[nodiscard]] std::unique_ptr<Timer> every(
        std::chrono::milliseconds interval, Job job) override;
    [[nodiscard]] std::unique_ptr<SerialQueue> makeSerialQueue(const char *label) override;

private:
    std::unique_ptr<Mailbox> m_mailbox;
    std::unique_ptr<Executor> m_executor;
};

} // namespace zorvane::platform
