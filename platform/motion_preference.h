#pragma once

#include <functional>

namespace zorvane::platform
{

/** Whether the user wants the desktop to move less. Main thread. */
class MotionPreference
{
public:
    virtual ~MotionPreference() = default;

    /** False where the desktop does not say. */
    [[nodiscard]] virtual bool isReduced() const = 0;
    /** Has @p changed called after each change of isReduced(); it takes the place of an earlier
     * one. */
    virtual void watch(std::function<void()> changed) = 0;
};

} // namespace zorvane::platform
