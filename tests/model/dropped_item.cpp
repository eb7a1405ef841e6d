#include "model/dropped_item.h"

#include "model/modelled_applications.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

using records::BlockedApplication;

namespace
{

/** Empty if it has to be listed. */
QString refusalOf(const Inspected &result, const Applications &list)
{
    if (!result.record)
        return result.refusal;
    if (isOurOwn(*result.record))
        return u"Zorvane cannot block itself."_s;
    const bool isListed = std::ranges::any_of(list, [&](const BlockedApplication &each) {
        return each.signingIdentifier == result.record->signingIdentifier;
    });
    return isListed ? result.record->name + u" is already on the list."_s : QString();
}

/** @p record at its place in @p list, under the id of the one in @p after that is new there. */
Applications grown(Applications list, BlockedApplication record, const Applications &after)
{
    for (const BlockedApplication &each : after) {
        if (std::ranges::none_of(list, [&](const auto &listed) { return listed.id == each.id; }))
            record.id = each.id;
    }
    list.append(record);
    sortByName(list);
    return list;
}

} // namespace

void DroppedItem::dropped(const QString &path)
{
    m_path = path;
    m_results.clear();
    m_isPending = true;
}

void DroppedItem::inspected(const QString &path, const Inspected &result)
{
    if (m_isPending && path == m_path && !m_results.contains(result))
        m_results.append(result);
}

bool DroppedItem::wasListed(const Applications &before, const Applications &after)
{
    const bool fits = std::ranges::any_of(m_results, [&](const Inspected &result) {
        return refusalOf(result, before).isEmpty() && after == grown(before, *result.record, after);
    });
    return std::exchange(m_isPending, false) && fits;
}

bool DroppedItem::wasRefused(const Applications &list, const QString &alert)
{
    const bool fits = std::ranges::any_of(m_results, [&](const Inspected &result) {
        return !alert.isEmpty() && refusalOf(result, list) == alert;
    });
    return std::exchange(m_isPending, false) && fits;
}

} // namespace zorvane::tests
