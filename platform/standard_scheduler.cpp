#include "platform/standard_scheduler.h"

#include "platform/executor.h"
#include "platform/mailbox.h"

#include <QTimer>

namespace zorvane::platform
{

namespace
{

// One for a long inspection, one for the discovery pass beside it.
constexpr unsigned workerCount = 2;

class RepeatingTimer final : public Timer
{
public:
    RepeatingTimer(std::chrono::milliseconds interval, Scheduler::Job job)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(job));
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.start(interval);
    }

private:
    QTimer m_timer;
};

} // namespace

StandardScheduler::StandardScheduler()
    : m_executor(workerCount)
    , m_delays(std::make_unique<QObject>())
{
}

StandardScheduler::~StandardScheduler()
{
    shutDown();
}

void StandardScheduler::shutDown()
{
    m_executor.stop();
    m_mailbox.close();
    m_delays.reset();
}

QDateTime StandardScheduler::now() const
{
    return QDateTime::currentDateTimeUtc();
}

void StandardScheduler::runInBackground(Priority priority, Job job)
{
    m_executor.add(priority, std::move(job));
}

void StandardScheduler::post(Job job)
{
    m_mailbox.post(std::move(job));
}

void StandardScheduler::after(std::chrono::milliseconds delay, Job job)
{
    if (m_delays)
        QTimer::singleShot(delay, Qt::PreciseTimer, m_delays.get(), std::move(job));
}

std::unique_ptr<Timer> StandardScheduler::every(std::chrono::milliseconds interval, Job job)
{
    return std::make_unique<RepeatingTimer>(interval, std::move(job));
}

std::unique_ptr<SerialQueue> StandardScheduler::makeSerialQueue(const char *label)
{
    return std::make_unique<ThreadQueue>(label);
}

} // namespace zorvane::platform
