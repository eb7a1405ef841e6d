#pragma once

#include "kills/aim.h"
#include "kills/busy_folder.h"
#include "kills/write_watch.h"

#include <algorithm>
#include <QDeadlineTimer>

namespace zorvane::tests
{

/** The moment of one kill: a time, or the start of the next write after it. Sees what is written
 * until then. */
class Moment
{
public:
    Moment(const Aim::Shot &shot, const BusyFolder &folder, When when)
        : m_folder(folder)
        , m_end(when == When::AtItsFirst     ? 0
                  : when == When::AtTheWrite ? std::max<qint64>(0, shot.delay - shot.spread)
                                             : shot.delay)
        , m_longest(when == When::AtItsFirst ? 8'000 : 4 * shot.spread)
        , m_begun(folder.state().filePath(QStringLiteral("preferences")), WriteWatch::Begun)
        , m_done(folder.state().filePath(QStringLiteral("preferences")), WriteWatch::Done)
        , m_when(when)
        , m_snapshots{folder.snapshot()}
    {
    }

    void wait()
    {
        while (m_done.wait(m_end))
            m_snapshots.append(m_folder.snapshot());
        if (m_when == When::AtTheWrite)
            m_begun.forget();
        if (m_when != When::Timed)
            static_cast<void>(m_begun.wait(QDeadlineTimer(m_longest)));
    }

    /** What is wrong after the kill; empty if nothing is. */
    [[nodiscard]] QString fault()
    {
        m_snapshots.append(m_folder.snapshot());
        const QString undone = m_folder.undone(m_snapshots);
        return undone.isEmpty() ? m_folder.damage() : undone;
    }

private:
    const BusyFolder &m_folder;
    const QDeadlineTimer m_end;
    const qint64 m_longest;
    const WriteWatch m_begun;
    const WriteWatch m_done;
    const When m_when;
    QList<QByteArray> m_snapshots;
};

} // namespace zorvane::tests
