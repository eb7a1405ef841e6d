#pragma once

#include "long/times.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <QRandomGenerator>
#include <QtGlobal>
#include <set>

namespace zorvane::tests
{

/** When a program is killed. */
enum class When {
    Timed, ///< some time about its write
    AtTheWrite, ///< at the beginning of that write
    AtItsFirst, ///< at the beginning of the first write that it makes
};

/**
 * Finds the moment of a write by the kills that came too early and too late for it; several threads
 * may shoot at the same.
 */
class Aim
{
public:
    /** @p milliseconds: about how long a start takes to its write. */
    explicit Aim(qint64 milliseconds)
        : m_delay(milliseconds)
    {
    }

    struct Shot {
        /** How long to wait with the kill, in milliseconds. */
        qint64 delay;
        /** By how much it may miss the moment. */
        qint64 spread;
    };

    [[nodiscard]] Shot next()
    {
        const std::scoped_lock lock(m_mutex);
        const qint64 error = m_random.bounded(2 * spread()) - spread();
        return {std::max<qint64>(0, m_delay + error), spread()};
    }

    void came(bool tooEarly, bool inBetween, When when)
    {
        const std::scoped_lock lock(m_mutex);
        if (when == When::Timed)
            m_delay += tooEarly ? spread() : -spread();
        ++(tooEarly ? m_early : m_late);
        m_between += inBetween ? 1 : 0;
        m_moments.insert(when);
    }

    /** The number of the round that begins now, in all threads together; nothing when @p rounds
     * were begun, or a few more where the moment has not been hit yet. */
    [[nodiscard]] std::optional<size_t> nextRound(int rounds)
    {
        constexpr int patience = 4;
        const std::scoped_lock lock(m_mutex);
        const bool goesOn
            = m_begun < rounds || (!hasHitWritesOften(rounds) && m_begun < patience * rounds);
        return goesOn ? std::optional(size_t(m_begun++)) : std::nullopt;
    }

    /** True if kills came before the write, in the middle of one, and after it; in the middle at
     * least once in twenty of the wanted rounds. A few rounds on a busy machine may do without. */
    [[nodiscard]] bool hasHitWritesOften(int rounds) const
    {
        return !isLong() || (m_early > 0 && m_late > 0 && m_between >= std::max(1, rounds / 20));
    }
    /** At how many of the moments something was killed. */
    [[nodiscard]] size_t moments() const { return m_moments.size(); }
    void report(const char *what) const
    {
        qInfo("%s: %d kills before the write, %d after it, %d left a half-written file beside",
            what, m_early, m_late, m_between);
    }

private:
    [[nodiscard]] qint64 spread() const { return std::max<qint64>(10, m_delay / 8); }

    std::mutex m_mutex;
    QRandomGenerator m_random{1};
    qint64 m_delay;
    int m_begun = 0;
    int m_early = 0;
    int m_late = 0;
    int m_between = 0;
    std::set<When> m_moments;
};

} // namespace zorvane::tests
