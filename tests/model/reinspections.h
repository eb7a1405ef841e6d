#pragma once

#include "model/modelled_bundles.h"

#include <QHash>
#include <QUuid>

namespace zorvane::tests
{

/** The inspections of stale records that are under way; each has to come to an end. */
class Reinspections
{
public:
    /** One begins, of the records in @p list that are stale, if any are. */
    void begin(const Applications &list);
    /** An inspection looks at the bundle at @p path, and has to make this of it. */
    void inspected(const QString &path, const Inspected &result);

    /** True if one of them has to make @p after of @p before at its end. */
    [[nodiscard]] bool canMake(const Applications &before, const Applications &after) const;
    /** Such a one has ended; or, if something else may have made the same, perhaps has. */
    void made(const Applications &before, const Applications &after, bool isSure);

    /** True if one of them has surely not ended. */
    [[nodiscard]] bool areUnderWay() const;

private:
    struct Stale {
        QString path;
        /** Empty until it is inspected. */
        QList<Inspected> results;
    };
    struct Run {
        QHash<QUuid, Stale> records;
        bool mayHaveEnded = false;
    };

    static bool canMake(const Run &run, const Applications &before, const Applications &after);
    static void inherit(Run &heir, const Run &run);

    QList<Run> m_runs;
};

} // namespace zorvane::tests
