#include "app/blocked_list.h"

#include "app/records/collation.h"

#include <algorithm>
#include <QHash>
#include <QString>

namespace zorvane::app
{

using records::BlockedApplication;

namespace
{

/**
 * The position of a record in @p next that signs as another one there and did not in @p before;
 * negative if there is none.
 */
qsizetype positionOfRepeated(
    const QList<BlockedApplication> &next, const QList<BlockedApplication> &before)
{
    QHash<QString, qsizetype> positions;
    for (qsizetype i = 0; i < next.size(); ++i) {
        const QString &identifier = next.at(i).signingIdentifier;
        const auto other = positions.constFind(identifier);
        const auto isChanged
            = [&](qsizetype at) { return before.at(at).signingIdentifier != identifier; };
        if (other != positions.cend() && (isChanged(i) || isChanged(*other)))
            return isChanged(i) ? i : *other;
        positions.insert(identifier, i);
    }
    return -1;
}

} // namespace

void BlockedList::load(const QList<BlockedApplication> &applications)
{
    m_applications = applications;
    m_hasLoaded = true;
}

bool BlockedList::containsSigningIdentifier(const QString &signingIdentifier) const
{
    return std::ranges::find(
               m_applications, signingIdentifier, &BlockedApplication::signingIdentifier)
        != m_applications.cend();
}

void BlockedList::insert(const BlockedApplication &application)
{
    m_applications.append(application);
    std::ranges::stable_sort(m_applications, records::NameOrder(), &BlockedApplication::name);
}

void BlockedList::remove(const QUuid &id)
{
    m_applications.removeIf([&](const BlockedApplication &entry) { return entry.id == id; });
}

void BlockedList::assign(const QList<BlockedApplication> &applications)
{
    m_applications = applications;
}

void BlockedList::replace(const QHash<QUuid, BlockedApplication> &newer)
{
    QList<BlockedApplication> next = m_applications;
    for (BlockedApplication &application : next)
        application = newer.value(application.id, application);
    // Each that goes back to its old form may meet another one there.
    auto twice = positionOfRepeated(next, m_applications);
    while (twice >= 0) {
        next[twice] = m_applications.at(twice);
        twice = positionOfRepeated(next, m_applications);
    }
    m_applications = next;
}

QList<BlockedApplication> BlockedList::staleApplications() const
{
    QList<BlockedApplication> stale;
    std::ranges::copy_if(m_applications, std::back_inserter(stale), records::isStale);
    return stale;
}

} // namespace zorvane::app
