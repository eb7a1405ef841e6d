#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <QObject>

namespace zorvane::platform
{

/**
 * Jobs for the main thread, run in order of posting. The jobs pass through a mutex of our own; Qt's
 * event queue only wakes the loop. Lives on the main thread.
 */
class Mailbox final : public QObject
{
public:
    /** Any thread. */
    void post(std::function<void()> job);
    /** Drops what was posted, now and later. */
    void close();

    bool event(QEvent *event) override;

private:
    std::mutex m_mutex;
    std::deque<std::function<void()>> m_jobs;
    bool m_closed = false;
};

} // namespace zorvane::platform
