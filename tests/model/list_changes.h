#pragma once

#include "model/possible_records.h"

#include <optional>
#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

namespace zorvane::tests
{

/** Watches the shown list: each change has to be one that was asked for, or that an inspection or
 * what was observed leads to. */
class ListChanges
{
public:
    /** @p possible outlives this. */
    ListChanges(const QList<records::BlockedApplication> &stored, const PossibleRecords &possible);

    /** The next addition comes from this path. */
    void dropped(const QString &path) { m_dropped = path; }
    /** The next change takes this record away, if it is there, and does nothing else. */
    void removing(const QUuid &id) { m_removing = id; }
    /** The records that are stale now are being inspected anew; those of a load are by themselves.
     */
    void reinspecting() { noteStale(m_shown); }

    /** The list is another now. Returns the name of what happened to it. */
    QString changed(const QList<records::BlockedApplication> &list);

    [[nodiscard]] const QList<records::BlockedApplication> &shown() const { return m_shown; }
    /** What was wrong with a change; empty if nothing was. */
    [[nodiscard]] const QString &broken() const { return m_broken; }

private:
    QString event(const QList<records::BlockedApplication> &list);
    void taken(const QList<records::BlockedApplication> &list);
    void removed(const QList<records::BlockedApplication> &list, const QUuid &id);
    void grown(const QList<records::BlockedApplication> &list);
    QString renewed(const QList<records::BlockedApplication> &list);
    void noteStale(const QList<records::BlockedApplication> &list);
    void checkUniqueness(const QList<records::BlockedApplication> &list);

    QList<records::BlockedApplication> m_stored;
    QList<records::BlockedApplication> m_shown;
    const PossibleRecords *m_possible;
    QString m_dropped;
    std::optional<QUuid> m_removing;
    QSet<QUuid> m_reinspected;
    bool m_isLoaded = false;
    QString m_broken;
};

} // namespace zorvane::tests
