#pragma once

#include <dispatch/dispatch.h>
#include <memory>

namespace zorvane::platform::macos
{

/**
 * Brings an answer of the system from any thread to the main thread and runs it there, if @p owner
 * lives then. An adapter dies on that thread too, so its answers end with it. The main queue runs
 * under Qt's loop as long as that is Core Foundation's.
 */
template <typename Answer> void onMainQueue(const std::weak_ptr<const void> &owner, Answer answer)
{
    dispatch_async(dispatch_get_main_queue(), ^{
        if (owner.lock())
            answer();
    });
}

} // namespace zorvane::platform::macos
