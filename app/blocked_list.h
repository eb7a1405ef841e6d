#pragma once

#include "app/records/blocked_application.h"

#include <QHash>
#include <QList>

namespace zorvane::app
{

/**
 * The blocked applications in memory: sorted by name as they are added, no two with one signing
 * identifier. Knows nothing of storage, filter or views. Main thread.
 */
class BlockedList
{
public:
    [[nodiscard]] const QList<records::BlockedApplication> &applications() const
    {
        return m_applications;
    }
    /** False until the saved list has been taken in. */
    [[nodiscard]] bool hasLoaded() const { return m_hasLoaded; }

    /** Takes the saved list in, in its stored order. */
    void load(const QList<records::BlockedApplication> &applications);

    /** True if a record with exactly this signing identifier is listed. */
    [[nodiscard]] bool containsSigningIdentifier(const QString &signingIdentifier) const;

    /** Adds a record; those whose names compare equal keep their order. */
    void insert(const records::BlockedApplication &application);

    /** Removes the records with this id. */
    void remove(const QUuid &id);

    /** Puts a changed form of the same list in its place. */
    void assign(const QList<records::BlockedApplication> &applications);

    /** Puts each record of @p newer, by id, in the place of the listed one, unless two would then
     * sign as the same: the one whose bundle has become another application stays as it was. */
    void replace(const QHash<QUuid, records::BlockedApplication> &newer);

    /** The records of older inspections, in list order. */
    [[nodiscard]] QList<records::BlockedApplication> staleApplications() const;

private:
    QList<records::BlockedApplication> m_applications;
    bool m_hasLoaded = false;
};

} // namespace zorvane::app
