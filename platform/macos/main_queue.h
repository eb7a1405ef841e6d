#pragma once

#include <memory>
#include <QCoreApplication>
#include <utility>

namespace zorvane::platform::macos
{

/**
 * Brings an answer of the system from any thread to the main thread and runs it there, in a later
 * turn of Qt's loop, if @p owner lives then. An adapter dies on that thread too, so its answers end
 * with it. The main dispatch queue would not do: only a loop of Core Foundation drains it, and Qt
 * has another one without windows.
 */
template <typename Answer>
void onMainQueue(std::weak_ptr<const void> owner, Answer answer)
{
    // Adapters die before the application object, to which nothing may be posted afterwards.
    if (owner.expired())
        return;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [owner = std::move(owner), answer = std::move(answer)] {
            // Held during the answer, which may let go of the last other hold.
            if (const auto alive = owner.lock())
                answer();
        },
        Qt::QueuedConnection);
}

} // namespace zorvane::platform::macos
