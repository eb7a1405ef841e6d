#pragma once

#include "platform/main_thread.h"

#include <functional>
#include <memory>
#include <QDBusConnection>

namespace zorvane::platform::simulated
{

/**
 * The desktop's session bus. A program may have to start it first, so that is left to a thread of
 * its own and no window waits for it. Main thread.
 */
class SessionBus
{
public:
    /** How the program gets its connection; on any thread, and it may take its time. */
    using Connect = std::function<QDBusConnection()>;

    /** The scheduler outlives this. */
    explicit SessionBus(Scheduler &scheduler, Connect connect = &QDBusConnection::sessionBus);

    /** Calls @p use on the main thread when that is done or has failed, if @p owner lives then. */
    void whenConnected(
        std::weak_ptr<const void> owner, std::function<void(const QDBusConnection &)> use);

private:
    Scheduler &m_scheduler;
    const Connect m_connect;
    const std::unique_ptr<SerialQueue> m_queue;
};

} // namespace zorvane::platform::simulated
