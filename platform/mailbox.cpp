#include "platform/mailbox.h"

#include <QCoreApplication>
#include <QEvent>

namespace zorvane::platform
{

void Mailbox::post(std::function<void()> job)
{
    bool wasEmpty = false;
    {
        const std::lock_guard lock(m_mutex);
        if (m_closed)
            return;
        wasEmpty = m_jobs.empty();
        m_jobs.push_back(std::move(job));
    }
    if (wasEmpty)
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void Mailbox::close()
{
    std::deque<std::function<void()>> dropped; // let go of after the lock
    const std::lock_guard lock(m_mutex);
    m_closed = true;
    dropped.swap(m_jobs);
}

bool Mailbox::event(QEvent *event)
{
    if (event->type() != QEvent::User)
        return QObject::event(event);
    // Only what is here now: jobs that jobs post wait for the next turn, so that input and painting
    // get theirs in between.
    std::deque<std::function<void()>> jobs;
    {
        const std::lock_guard lock(m_mutex);
        jobs.swap(m_jobs);
    }
    for (auto &job : jobs) {
        job();
        job = nullptr;
    }
    return true;
}

} // namespace zorvane::platform
