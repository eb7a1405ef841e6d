#pragma once

#include "inspection/application_inspector.h"

#include <memory>
#include <QHash>
#include <QList>
#include <QUuid>

namespace zorvane::app
{

/**
 * Inspects each record's bundle again; those that cannot be inspected are left out. Stops early
 * when @p owner is gone. Any thread; blocks on the disk.
 */
[[nodiscard]] QList<records::BlockedApplication> reinspected(
    const inspection::ApplicationInspector &inspector,
    const QList<records::BlockedApplication> &applications, const std::weak_ptr<const void> &owner);

/** The records by their ids. Every addition makes a new one; a stored list that was edited by hand
 * may repeat one, which ends the program, for going on would let one record overwrite another. */
[[nodiscard]] QHash<QUuid, records::BlockedApplication> byUniqueId(
    const QList<records::BlockedApplication> &applications);

} // namespace zorvane::app
