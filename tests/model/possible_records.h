#pragma once

#include "app/records/blocked_application.h"

#include <QList>
#include <QPair>
#include <QSet>
#include <QString>

namespace zorvane::tests
{

/** What an inspection or a merge can make of a record, by what there was to inspect and to observe
 * so far. */
class PossibleRecords
{
public:
    /** A bundle was there that an inspection makes this record of; its id does not count. */
    void couldBeInspected(records::BlockedApplication record);
    /** A process with this identity was seen inside the bundle at @p path. */
    void wasObserved(const QString &path, const records::CodeIdentity &identity);

    [[nodiscard]] bool isInspected(records::BlockedApplication record) const;
    /** True if @p record is @p old with nothing but observed identities of its own added. */
    [[nodiscard]] bool isMerged(
        const records::BlockedApplication &old, const records::BlockedApplication &record) const;

private:
    QList<records::BlockedApplication> m_inspected;
    QSet<QPair<QString, records::CodeIdentity>> m_observed;
};

} // namespace zorvane::tests
