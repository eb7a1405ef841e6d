#include "model/list_changes.h"

#include "app/records/collation.h"

#include <algorithm>
#include <QSet>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

using records::BlockedApplication;

ListChanges::ListChanges(const QList<BlockedApplication> &stored)
    : m_stored(stored)
{
}

QString ListChanges::changed(const QList<BlockedApplication> &list)
{
    QString event = u"load"_s;
    if (!m_isLoaded) {
        taken(list);
    } else if (list.size() > m_shown.size()) {
        event = u"addition"_s;
        grown(list);
    } else {
        event = renewed(list);
    }
    QSet<QString> identifiers;
    QSet<QUuid> ids;
    for (const BlockedApplication &application : list) {
        identifiers.insert(application.signingIdentifier);
        ids.insert(application.id);
    }
    if (identifiers.size() != list.size() || ids.size() != list.size())
        m_broken = u"something is listed twice"_s;
    m_shown = list;
    return event;
}

void ListChanges::taken(const QList<BlockedApplication> &list)
{
    m_isLoaded = true;
    auto expected = m_stored;
    expected.removeIf([](const BlockedApplication &each) {
        return each.signingIdentifier.startsWith("dev.kestrelworks.Zorvane"_L1);
    });
    if (list != expected)
        m_broken = u"another list was loaded than the stored one without own records"_s;
}

void ListChanges::grown(const QList<BlockedApplication> &list)
{
    auto expected = m_shown;
    for (const BlockedApplication &application : list) {
        if (!m_shown.contains(application))
            expected.append(application);
    }
    std::ranges::stable_sort(expected, records::NameOrder(), &BlockedApplication::name);
    if (list.size() != m_shown.size() + 1 || list != expected)
        m_broken = u"an addition did not leave the list sorted"_s;
}

/** Records may go, and may be replaced by newer ones of the same application; their order stays. */
QString ListChanges::renewed(const QList<BlockedApplication> &list)
{
    QString event = list.size() < m_shown.size() ? u"removal"_s : u"no change"_s;
    auto old = m_shown.cbegin();
    for (const BlockedApplication &application : list) {
        old = std::ranges::find(old, m_shown.cend(), application.id, &BlockedApplication::id);
        if (old == m_shown.cend() || old->signingIdentifier != application.signingIdentifier) {
            m_broken = u"the list's order changed, or a record became another's"_s;
            return event;
        }
        if (old->inspectionVersion != application.inspectionVersion)
            event = u"re-inspection"_s;
        else if (*old != application)
            event = u"merge"_s;
        ++old;
    }
    if (list.size() < m_shown.size() - 1)
        m_broken = u"more than one record went at a time"_s;
    return event;
}

} // namespace zorvane::tests
