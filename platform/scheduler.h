#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <QDateTime>

namespace zorvane::platform
{

/** How urgent background work is. */
enum class Priority { UserInitiated, Utility };

/** A queue that runs its jobs one after the other, away from the main thread. */
class SerialQueue
{
public:
    /** Waits until every job that was added has run. */
    virtual ~SerialQueue() = default;

    /** Adds a job behind all others. Any thread. */
    virtual void add(std::function<void()> job) = 0;
};

/** A repeating timer; destroying it ends it. Main thread. */
class Timer
{
public:
    virtual ~Timer() = default;
};

/**
 * Time and threads: the only place where the program waits, repeats, or leaves the main thread.
 */
class Scheduler
{
public:
    using Job = std::function<void()>;

    virtual ~Scheduler() = default;

    /**
     * Waits for the background jobs that have begun and drops all others; from then on nothing runs
     * any more, so that what the jobs worked with can go. Main thread.
     */
    virtual void shutDown() = 0;

    /** The time of day, in UTC. Any thread. */
    [[nodiscard]] virtual QDateTime now() const = 0;
    /** Runs @p job on a background thread; @p priority decides which job goes first. Any thread. */
    virtual void runInBackground(Priority priority, Job job) = 0;
    /** Runs @p job on the main thread, in a later turn of its loop, in order of posting. Any
     * thread. */
    virtual void post(Job job) = 0;
    /** Runs @p job once on the main thread when @p delay has passed. Main thread. */
    virtual void after(std::chrono::milliseconds delay, Job job) = 0;
    /** Runs @p job on the main thread each time @p interval has passed. Main thread. */
    [[nodiscard]] virtual std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Job job)
        = 0;
    /** A serial queue of its own. @p label names it for debuggers. */
    [[nodiscard]] virtual std::unique_ptr<SerialQueue> makeSerialQueue(const char *label) = 0;
};

} // namespace zorvane::platform
