#include "app/observed_components.h"

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
        const auto made = last.m_entries.constFind(application.id);
        if (made != last.m_entries.cend() && made->application == application
            && made->processes == own)
            m_entries.insert(application.id, *made);
        else
            m_entries.insert(application.id,
                {application, own, inspection::networkComponents(application, own)});
    }
}

const NetworkComponents *ObservedComponents::of(const BlockedApplication &application) const
{
    const auto found = m_entries.constFind(application.id);
    return found != m_entries.cend() && found->application == application ? &found->components
                                                                          : nullptr;
}

} // namespace zorvane::app
