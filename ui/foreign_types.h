#pragma once

#include "app/app_block_store.h"
#include "filter/filter_controller.h"
#include "filter/filter_status.h"

#include <qqmlregistration.h>

/**
 * @file
 * The types of other rooms as the views know them. The rooms themselves know nothing of views.
 */
namespace zorvane::ui
{

struct ForeignAppBlockStore {
    Q_GADGET
    QML_FOREIGN(zorvane::app::AppBlockStore)
    QML_NAMED_ELEMENT(AppBlockStore)
    QML_UNCREATABLE("made by the program")
};

struct ForeignFilterController {
    Q_GADGET
    QML_FOREIGN(zorvane::filter::FilterController)
    QML_NAMED_ELEMENT(FilterController)
    QML_UNCREATABLE("owned by the store")
};

struct ForeignFilterStatus {
    Q_GADGET
    QML_FOREIGN(zorvane::filter::FilterStatus)
    QML_VALUE_TYPE(filterStatus)
};

/** The kinds of a status, as FilterStatus.Enabled. */
namespace ForeignFilterStatusKinds
{
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(zorvane::filter::FilterStatus)
QML_NAMED_ELEMENT(FilterStatus)
} // namespace ForeignFilterStatusKinds

} // namespace zorvane::ui
