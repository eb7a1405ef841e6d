#pragma once

#include <functional>
#include <memory>

namespace zorvane::platform
{

/**
 * Sees to it that one program at a time works with the user's state. Made by a program's main after
 * the application object and kept until the end; main thread.
 */
class SingleInstance
{
public:
    enum class Outcome {
        First, ///< this program is the one, until it ends in any way
        AnotherRuns, ///< another one is, and was told to come forward; this one should end, with 0
        Unusable, ///< the state cannot be worked with, which was said; this one should end, with 1
    };

    virtual ~SingleInstance() = default;

    /** Called once, before anything of the state is read. Waits a few seconds at most. */
    [[nodiscard]] virtual Outcome acquire() = 0;
    /**
     * What the first program does when another start is attempted. Null when it is about to end:
     * another start then waits for that, and becomes the first.
     */
    virtual void onBringForward(std::function<void()> action) = 0;
};

/** The guard of the system that this program was built for. */
[[nodiscard]] std::unique_ptr<SingleInstance> makeSingleInstance();

} // namespace zorvane::platform
