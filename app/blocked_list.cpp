#include "app/blocked_list.h"

#include "app/records/collation.h"

#include <algorithm>

namespace zorvane::app
{

using records::BlockedApplication;

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
    for (BlockedApplication &application : m_applications) {
        const auto found = newer.constFind(application.id);
        if (found == newer.cend())
            continue;
        if (found->signingIdentifier == application.signingIdentifier
            || !containsSigningIdentifier(found->signingIdentifier))
            application = *found;
    }
}

QList<BlockedApplication> BlockedList::staleApplications() const
{
    QList<BlockedApplication> stale;
    std::ranges::copy_if(m_applications, std::back_inserter(stale), records::isStale);
    return stale;
}

} // namespace zorvane::app
