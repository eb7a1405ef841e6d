#include "app/observed_components.h"

#include <algorithm>
#include <utility>

namespace zorvane::app
{

using inspection::DiscoveredNetworkProcess;
using records::BlockedApplication;

ObservedComponents::ObservedComponents(const QList<BlockedApplication> &applications,
    const QList<DiscoveredNetworkProcess> &processes, const QList<QList<qsizetype>> &owned,
    const ObservedComponents &last)
{
    m_entries.reserve(applications.size());
    for (qsizetype i = 0; i < applications.size(); ++i) {
        const BlockedApplication &application = applications.at(i);
        QList<DiscoveredNetworkProcess> own;
        for (const qsizetype position : owned.at(i))
            own.append(processes.at(position));
        const Entry *const made = last.entryOf(application);
        if (made != nullptr && made->processes == own)
            m_entries.insert(application.id, *made);
        else
            m_entries.insert(application.id,
                {application, own, inspection::networkComponents(application, own)});
    }
}

void ObservedComponents::add(const ObservedComponents &other)
{
    // Never in place: a background thread may only just have let go of these.
    auto entries = m_entries;
    entries.unite(other.m_entries);
    m_entries = std::move(entries);
}

const NetworkComponents *ObservedComponents::of(const BlockedApplication &application) const
{
    const Entry *const entry = entryOf(application);
    return entry != nullptr ? &entry->components : nullptr;
}

const ObservedComponents::Entry *ObservedComponents::entryOf(
    const BlockedApplication &application) const
{
    const auto [begin, end] = m_entries.equal_range(application.id);
    const auto found = std::find_if(
        begin, end, [&](const Entry &entry) { return entry.application == application; });
    return found != end ? &*found : nullptr;
}

} // namespace zorvane::app
