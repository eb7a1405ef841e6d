#pragma once

#include "model/dropped_item.h"
#include "model/observed_processes.h"
#include "model/reinspections.h"

#include <optional>
#include <QString>
#include <QUuid>

namespace zorvane::tests
{

/** Watches the shown list of one run: each change has to be one that was asked for, or that an
 * inspection or what was observed leads to; and what has to lead to a change does. */
class ListChanges
{
public:
    /** @p observed outlives this. */
    ListChanges(Applications stored, ObservedProcesses &observed);

    /** The next addition, or the next refusal, is of this item. */
    void dropped(const QString &path) { m_drop.dropped(path); }
    /** The next change takes this record away, if it is there, and does nothing else. */
    void removing(const QUuid &id) { m_removing = id; }
    /** The records that are stale now are being inspected anew; those of a load are by themselves.
     */
    void reinspecting() { m_reinspections.begin(m_shown); }
    /** An inspection looks at the bundle at @p path, and has to make this of it. */
    void inspected(const QString &path, const Inspected &result);

    /** The list is another now. Returns the name of what happened to it. */
    QString changed(const Applications &list);
    /** The user was told this of the item that was dropped. */
    void refused(const QString &alert);

    [[nodiscard]] const Applications &shown() const { return m_shown; }
    [[nodiscard]] bool isLoaded() const { return m_isLoaded; }
    [[nodiscard]] bool isDropPending() const { return m_drop.isPending(); }
    /** What was wrong with a change; empty if nothing was. */
    [[nodiscard]] const QString &broken() const { return m_broken; }
    /** What should have happened by now, at rest; empty if all did. */
    [[nodiscard]] QString owed(const QDateTime &now) const;

private:
    QString event(const Applications &list);
    void taken(const Applications &list);
    void removed(const Applications &list, const QUuid &id);
    QString renewed(const Applications &list);
    [[nodiscard]] bool canBeMerged(const Applications &list) const;
    [[nodiscard]] QString nameOfReinspection(const Applications &list) const;
    void checkUniqueness(const Applications &list);

    Applications m_stored;
    Applications m_shown;
    ObservedProcesses *m_observed;
    DroppedItem m_drop;
    Reinspections m_reinspections;
    std::optional<QUuid> m_removing;
    bool m_isLoaded = false;
    QString m_broken;
};

} // namespace zorvane::tests
