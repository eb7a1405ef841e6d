#pragma once

#include "platform/scheduler.h"

#include <functional>
#include <memory>
#include <tuple>
#include <utility>

/**
 * @file
 * The one way back to the main thread. An answer from elsewhere is posted there and reaches its
 * owner only if that still lives; otherwise it is dropped.
 */
namespace zorvane::platform
{

/**
 * Lets answers find out on the main thread whether the object that holds this still lives. The last
 * member of its class, so that it dies first.
 */
class Lifetime
{
public:
    [[nodiscard]] std::weak_ptr<const void> watch() const { return m_token; }

private:
    std::shared_ptr<const void> m_token = std::make_shared<char>();
};

/**
 * A function for any thread that calls @p answer with the same arguments, copied, on the main
 * thread, if @p owner lives then.
 */
template <typename Answer>
[[nodiscard]] auto onMainThread(
    Scheduler &scheduler, std::weak_ptr<const void> owner, Answer answer)
{
    return [&scheduler, owner = std::move(owner), answer = std::move(answer)](
               const auto &...arguments) {
        scheduler.post([owner, answer, values = std::make_tuple(arguments...)]() mutable {
            // Held during the answer, which may let go of the last other hold.
            if (const auto alive = owner.lock())
                std::apply(answer, std::move(values));
        });
    };
}

/**
 * Runs @p work on a background thread and hands its result to @p done on the main thread, if @p
 * owner lives then. @p work holds values only.
 */
template <typename Work, typename Done>
void runInBackground(
    Scheduler &scheduler, Priority priority, std::weak_ptr<const void> owner, Work work, Done done)
{
    scheduler.runInBackground(priority,
        [work = std::move(work),
            answer = onMainThread(scheduler, std::move(owner), std::move(done))]() mutable {
            answer(work());
        });
}

} // namespace zorvane::platform
