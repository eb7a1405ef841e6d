#pragma once

#include "inspection/network_components.h"

#include <QHash>
#include <QUuid>

namespace zorvane::app
{

using NetworkComponents = QList<inspection::ApplicationNetworkComponent>;

/**
 * The network components of every listed application, made away from the main thread so that a long
 * list costs it next to nothing. A value.
 */
class ObservedComponents
{
public:
    ObservedComponents() = default;

    /**
     * @p owned holds the positions of each application's processes. What @p last has for an
     * application of which nothing changed is shared, not made again.
     */
    ObservedComponents(const QList<records::BlockedApplication> &applications,
        const QList<inspection::DiscoveredNetworkProcess> &processes,
        const QList<QList<qsizetype>> &owned, const ObservedComponents &last);

    /** Takes in what was made for other applications, with the same processes. */
    void add(const ObservedComponents &other);

    /** Null if they were not made for @p application as it is. */
    [[nodiscard]] const NetworkComponents *of(const records::BlockedApplication &application) const;

private:
    struct Entry {
        records::BlockedApplication application;
        QList<inspection::DiscoveredNetworkProcess> processes;
        NetworkComponents components;
    };

    [[nodiscard]] const Entry *entryOf(const records::BlockedApplication &application) const;

    /** A stored list may hold an id twice; each of the records has its own entry. */
    QMultiHash<QUuid, Entry> m_entries;
};

} // namespace zorvane::app
