#pragma once

#include "app/app_block_store.h"
#include "filter/filter_controller.h"
#include "filter/filter_status.h"
#include "updates/update_controller.h"

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

struct ForeignUpdateController {
    Q_GADGET
    QML_FOREIGN(zorvane::updates::UpdateController)
    QML_NAMED_ELEMENT(UpdateController)
    QML_UNCREATABLE("owned by the store")
};

struct ForeignFilterStatus {
    Q_GADGET
    QML_FOREIGN(zorvane::filter::FilterStatus)
    QML_VALUE_TYPE(filterStatus)
};

/**
 * The kinds of a status, as FilterStatus.Enabled in views. Listed again, because the QML tools of
 * Qt 6.4 do not find the enumerations of a value type of another room.
 */
namespace StatusKinds
{
Q_NAMESPACE
QML_NAMED_ELEMENT(FilterStatus)

using Status = filter::FilterStatus::Kind;

enum Kind {
    Failed = static_cast<int>(Status::Failed),
    Inactive = static_cast<int>(Status::Inactive),
    InstallationRequired = static_cast<int>(Status::InstallationRequired),
    Activating = static_cast<int>(Status::Activating),
    AwaitingApproval = static_cast<int>(Status::AwaitingApproval),
    Enabled = static_cast<int>(Status::Enabled),
};
Q_ENUM_NS(Kind)
} // namespace StatusKinds

} // namespace zorvane::ui
