#pragma once

#include "model/expected_records.h"

#include <QDateTime>

namespace zorvane::tests
{

/** What the filter has observed, and what the program has read of it. */
class ObservedProcesses
{
public:
    explicit ObservedProcesses(const QDateTime &now)
        : m_earliest(now)
        , m_latest(now)
    {
    }

    /** The filter stored these, or bytes that tell of none. */
    void stored(const Processes &processes) { m_stored = processes; }
    /** A pass may begin at this time, as at any since the last reading. */
    void timeIs(const QDateTime &now);
    /** The program reads them now, and may merge what it reads once. */
    void wereRead(const QDateTime &now);
    /** It has merged what it read. */
    void wereMerged() { m_canBeMerged = false; }
    /** Another program than the one that read them. */
    void programStarted();

    [[nodiscard]] bool canBeMerged() const { return m_canBeMerged; }
    /** True if what is stored has been read. */
    [[nodiscard]] bool areRead() const { return m_read == m_stored; }
    /** What the last reading may have brought, by when its pass may have begun. */
    [[nodiscard]] QList<Processes> possiblyFound() const;
    /** What is recent enough at the time @p now, most recent first. */
    [[nodiscard]] Processes recent(const QDateTime &now) const;

private:
    Processes m_stored;
    std::optional<Processes> m_read;
    /** What it may have been when the reading began. */
    QDateTime m_readEarliest;
    QDateTime m_readLatest;
    QDateTime m_earliest;
    QDateTime m_latest;
    bool m_canBeMerged = false;
};

} // namespace zorvane::tests
