#include "model/list_changes.h"

#include "app/records/collation.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

using records::BlockedApplication;

ListChanges::ListChanges(const QList<BlockedApplication> &stored, const PossibleRecords &possible)
    : m_stored(stored)
    , m_possible(&possible)
{
}

QString ListChanges::changed(const QList<BlockedApplication> &list)
{
    QString name = event(list);
    checkUniqueness(list);
    m_shown = list;
    return name;
}

QString ListChanges::event(const QList<BlockedApplication> &list)
{
    if (!m_isLoaded) {
        taken(list);
        return u"load"_s;
    }
    if (const auto id = std::exchange(m_removing, std::nullopt)) {
        removed(list, *id);
        return list.size() < m_shown.size() ? u"removal"_s : u"no change"_s;
    }
    if (list.size() != m_shown.size()) {
        grown(list);
        return u"addition"_s;
    }
    return renewed(list);
}

void ListChanges::noteStale(const QList<BlockedApplication> &list)
{
    for (const BlockedApplication &application : list) {
        if (records::isStale(application))
            m_reinspected.insert(application.id);
    }
}

void ListChanges::checkUniqueness(const QList<BlockedApplication> &list)
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

void ListChanges::taken(const QList<BlockedApplication> &list)
{
    m_isLoaded = true;
    noteStale(list);
    auto expected = m_stored;
    expected.removeIf([](const BlockedApplication &each) {
        return each.signingIdentifier.startsWith("dev.kestrelworks.Zorvane"_L1);
    });
    if (list != expected)
        m_broken = u"another list was loaded than the stored one without own records"_s;
}

void ListChanges::removed(const QList<BlockedApplication> &list, const QUuid &id)
{
    auto expected = m_shown;
    expected.removeIf([&](const BlockedApplication &each) { return each.id == id; });
    if (list != expected)
        m_broken = u"a removal took another record away, or changed one"_s;
}

void ListChanges::grown(const QList<BlockedApplication> &list)
{
    auto expected = m_shown;
    for (const BlockedApplication &application : list) {
        if (m_shown.contains(application))
            continue;
        expected.append(application);
        if (application.path != m_dropped || !m_possible->isInspected(application))
            m_broken = u"what was added is not what was dropped"_s;
    }
    std::ranges::stable_sort(expected, records::NameOrder(), &BlockedApplication::name);
    if (list.size() != m_shown.size() + 1 || list != expected)
        m_broken = u"an addition did not leave the list sorted"_s;
}

/** Each record stays as it is or becomes what an inspection or a merge makes of it; their order
 * stays. */
QString ListChanges::renewed(const QList<BlockedApplication> &list)
{
    QString name = u"no change"_s;
    for (qsizetype i = 0; i < list.size(); ++i) {
        const BlockedApplication &old = m_shown.at(i);
        const BlockedApplication &application = list.at(i);
        if (application == old)
            continue;
        if (application.id != old.id || application.path != old.path)
            m_broken = u"the list's order changed, or a record became another's"_s;
        else if (m_possible->isMerged(old, application))
            name = records::isStale(old) ? u"new form"_s : u"merge"_s;
        else if (m_reinspected.contains(old.id) && m_possible->isInspected(application))
            name = application.signingIdentifier == old.signingIdentifier
                ? u"re-inspection"_s
                : u"another application"_s;
        else
            m_broken = u"a record became what neither an inspection nor a merge makes of it"_s;
    }
    return name;
}

} // namespace zorvane::tests
