#include "model/list_changes.h"

#include <algorithm>
#include <QSet>
#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

using records::BlockedApplication;

ListChanges::ListChanges(Applications stored, ObservedProcesses &observed)
    : m_stored(std::move(stored))
    , m_observed(&observed)
{
}

void ListChanges::inspected(const QString &path, const Inspected &result)
{
    m_drop.inspected(path, result);
    m_reinspections.inspected(path, result);
}

QString ListChanges::changed(const Applications &list)
{
    QString name = event(list);
    checkUniqueness(list);
    m_shown = list;
    return name;
}

QString ListChanges::event(const Applications &list)
{
    if (!m_isLoaded) {
        taken(list);
        return u"load"_s;
    }
    if (const auto id = std::exchange(m_removing, std::nullopt)) {
        removed(list, *id);
        return list.size() < m_shown.size() ? u"removal"_s : u"no change"_s;
    }
    if (list.size() == m_shown.size())
        return renewed(list);
    if (!m_drop.wasListed(m_shown, list))
        m_broken = u"what was added is not what was dropped, or not in its place"_s;
    return u"addition"_s;
}

void ListChanges::refused(const QString &alert)
{
    if (!m_drop.wasRefused(m_shown, alert))
        m_broken = u"an alert without its reason: "_s + alert;
}

void ListChanges::checkUniqueness(const Applications &list)
{
    QSet<QString> identifiers;
    QSet<QUuid> ids;
    for (const BlockedApplication &application : list) {
        identifiers.insert(application.signingIdentifier);
        ids.insert(application.id);
    }
    if (identifiers.size() != list.size() || ids.size() != list.size())
        m_broken = u"something is listed twice"_s;
}

void ListChanges::taken(const Applications &list)
{
    m_isLoaded = true;
    m_reinspections.begin(list);
    auto expected = m_stored;
    expected.removeIf(isOurOwn);
    if (list != expected)
        m_broken = u"another list was loaded than the stored one without own records"_s;
}

void ListChanges::removed(const Applications &list, const QUuid &id)
{
    auto expected = m_shown;
    expected.removeIf([&](const BlockedApplication &each) { return each.id == id; });
    if (list != expected)
        m_broken = u"a removal took another record away, or changed one"_s;
}

/** The whole list is what a merge or what an inspection of the stale records makes of it. */
QString ListChanges::renewed(const Applications &list)
{
    const bool isMerge = list != m_shown && canBeMerged(list);
    const bool isReinspection = m_reinspections.canMake(m_shown, list);
    if (isReinspection)
        m_reinspections.made(m_shown, list, !isMerge);
    if (isMerge && isReinspection)
        return u"merge or re-inspection"_s;
    if (isReinspection)
        return nameOfReinspection(list);
    if (!isMerge) {
        m_broken = u"the list became what neither an inspection nor a merge makes of it"_s;
        return u"no change"_s;
    }
    m_observed->wereMerged();
    return list == expectedMerge(m_shown, {}) ? u"new form"_s : u"merge"_s;
}

bool ListChanges::canBeMerged(const Applications &list) const
{
    return m_observed->canBeMerged()
        && std::ranges::any_of(m_observed->possiblyFound(),
            [&](const Processes &processes) { return list == expectedMerge(m_shown, processes); });
}

QString ListChanges::nameOfReinspection(const Applications &list) const
{
    if (list == m_shown)
        return u"re-inspection without result"_s;
    return std::ranges::equal(list, m_shown, {}, &BlockedApplication::signingIdentifier,
               &BlockedApplication::signingIdentifier)
        ? u"re-inspection"_s
        : u"another application"_s;
}

QString ListChanges::owed(const QDateTime &now) const
{
    if (!m_isLoaded)
        return u"the list was never loaded"_s;
    if (m_drop.isPending())
        return u"what was dropped was neither listed nor refused"_s;
    if (m_reinspections.areUnderWay())
        return u"stale records were not inspected anew"_s;
    if (!m_observed->areRead())
        return u"what was observed was never read"_s;
    if (expectedMerge(m_shown, m_observed->recent(now)) != m_shown)
        return u"what was observed was not taken in"_s;
    return {};
}

} // namespace zorvane::tests
