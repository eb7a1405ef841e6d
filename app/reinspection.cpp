#include "app/reinspection.h"

#include <cstdio>
#include <cstdlib>
#include <QUrl>

namespace zorvane::app
{

using records::BlockedApplication;

QList<BlockedApplication> reinspected(const inspection::ApplicationInspector &inspector,
    const QList<BlockedApplication> &applications, const std::weak_ptr<const void> &owner)
{
    QList<BlockedApplication> result;
    for (const BlockedApplication &application : applications) {
        if (owner.expired())
            break;
        const auto inspected
            = inspector.inspectApplication(QUrl::fromLocalFile(application.path), application.id);
        if (const auto *renewed = std::get_if<BlockedApplication>(&inspected))
            result.append(*renewed);
    }
    return result;
}

QHash<QUuid, BlockedApplication> byUniqueId(const QList<BlockedApplication> &applications)
{
    QHash<QUuid, BlockedApplication> result;
    for (const BlockedApplication &application : applications) {
        if (result.contains(application.id)) {
            std::fputs("zorvane: two blocked applications have the same id\n", stderr);
            std::abort();
        }
        result.insert(application.id, application);
    }
    return result;
}

} // namespace zorvane::app
