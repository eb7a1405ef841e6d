#pragma once

#include "model/model.h"

/** @file What happens to a filter controller in its model. */
namespace zorvane::tests::filter_actions
{

/** Their names and weights, in the order of the enumeration below. */
inline const QList<Action> actions{{QStringLiteral("refresh status"), 3},
    {QStringLiteral("refresh status with rules"), 2}, {QStringLiteral("request activation"), 4},
    {QStringLiteral("apply rules"), 4}, {QStringLiteral("disable filter"), 3},
    {QStringLiteral("answer"), 24}, {QStringLiteral("repeat an answer"), 3},
    {QStringLiteral("run on the main thread"), 24}, {QStringLiteral("fail the next load"), 2},
    {QStringLiteral("fail the next save"), 4}, {QStringLiteral("need approval"), 2},
    {QStringLiteral("finish activation"), 4}, {QStringLiteral("fail activation"), 2},
    {QStringLiteral("let time pass"), 6}, {QStringLiteral("set the clock"), 1},
    {QStringLiteral("move the program"), 1}, {QStringLiteral("rename the program"), 1},
    {QStringLiteral("switch the filter elsewhere"), 1}};

enum Kind {
    Refresh,
    RefreshWithRules,
    RequestActivation,
    ApplyRules,
    Disable,
    Answer,
    Repeat,
    RunPosted,
    FailLoad,
    FailSave,
    NeedApproval,
    FinishActivation,
    FailActivation,
    Pass,
    SetClock,
    Move,
    Rename,
    SwitchElsewhere,
};

} // namespace zorvane::tests::filter_actions
