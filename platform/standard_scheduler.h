#pragma once

#include "platform/executor.h"
#include "platform/mailbox.h"
#include "platform/scheduler.h"

namespace zorvane::platform
{

/**
 * The scheduler of every real system: standard threads, a mutex-guarded mailbox, and Qt's event
 * loop as the main thread's wake-up and clock. Created on the main thread after the application
 * object.
 */
class StandardScheduler final : public Scheduler
{
public:
    StandardScheduler();
    ~StandardScheduler() override;

    void shutDown() override;

    [[nodiscard]] QDateTime now() const override;
    void runInBackground(Priority priority, Job job) override;
    void post(Job job) override;
    void after(std::chrono::milliseconds delay, Job job) override;
    [[nodiscard]] std::unique_ptr<Timer> every(
        std::chrono::milliseconds interval, Job job) override;
    [[nodiscard]] std::unique_ptr<SerialQueue> makeSerialQueue(const char *label) override;

private:
    Mailbox m_mailbox;
    Executor m_executor;
    /** Owns the delayed jobs; gone after the end. */
    std::unique_ptr<QObject> m_delays;
};

} // namespace zorvane::platform
