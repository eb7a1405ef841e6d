#pragma once

#include "model/modelled_bundles.h"

namespace zorvane::tests
{

/** What was dropped last: it has to be listed, or refused for the reason that there was. */
class DroppedItem
{
public:
    void dropped(const QString &path);
    /** An inspection looks at the bundle at @p path, and has to make this of it. */
    void inspected(const QString &path, const Inspected &result);

    /** True until it was listed or refused. */
    [[nodiscard]] bool isPending() const { return m_isPending; }
    /** The list grew from @p before to @p after. False if this item did not do it. */
    [[nodiscard]] bool wasListed(const Applications &before, const Applications &after);
    /** The user was told @p alert. False if it says nothing true of this item. */
    [[nodiscard]] bool wasRefused(const Applications &list, const QString &alert);

private:
    QString m_path;
    QList<Inspected> m_results;
    bool m_isPending = false;
};

} // namespace zorvane::tests
