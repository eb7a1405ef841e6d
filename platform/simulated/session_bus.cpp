#include "platform/simulated/session_bus.h"

#include <utility>

namespace zorvane::platform::simulated
{

SessionBus::SessionBus(Scheduler &scheduler, Connect connect)
    : m_scheduler(scheduler)
    , m_connect(std::move(connect))
    , m_queue(scheduler.makeSerialQueue("zorvane.bus"))
{
}

void SessionBus::whenConnected(
    std::weak_ptr<const void> owner, std::function<void(const QDBusConnection &)> use)
{
    m_queue->add([connect = m_connect,
                     answer = onMainThread(m_scheduler, std::move(owner), std::move(use))] {
        answer(connect());
    });
}

} // namespace zorvane::platform::simulated
