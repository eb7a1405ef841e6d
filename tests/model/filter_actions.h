#pragma once

#include "model/model.h"

/** @file What happens to a filter controller in its model. */
namespace zorvane::tests::filter_actions
{

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
    FailSavesForWantOfPermission,
    NeedApproval,
    FinishActivation,
    FailActivation,
    Pass,
    Rest,
    SetClock,
    Move,
    Rename,
    SwitchElsewhere,
};

/** Their names and weights. */
inline const QList<Action> actions{
    {Refresh, QStringLiteral("refresh status"), 3},
    {RefreshWithRules, QStringLiteral("refresh status with rules"), 2},
    {RequestActivation, QStringLiteral("request activation"), 4},
    {ApplyRules, QStringLiteral("apply rules"), 4},
    {Disable, QStringLiteral("disable filter"), 3},
    {Answer, QStringLiteral("answer"), 24},
    {Repeat, QStringLiteral("repeat an answer"), 3},
    {RunPosted, QStringLiteral("run on the main thread"), 24},
    {FailLoad, QStringLiteral("fail the next load"), 2},
    {FailSave, QStringLiteral("fail the next save"), 4},
    {FailSavesForWantOfPermission,
        QStringLiteral("fail the next four saves for want of permission"), 2},
    {NeedApproval, QStringLiteral("need approval"), 2},
    {FinishActivation, QStringLiteral("finish activation"), 4},
    {FailActivation, QStringLiteral("fail activation"), 2},
    {Pass, QStringLiteral("let time pass"), 6},
    {Rest, QStringLiteral("answer and run until nothing waits"), 4},
    {SetClock, QStringLiteral("set the clock"), 1},
    {Move, QStringLiteral("move the program"), 1},
    {Rename, QStringLiteral("rename the program"), 1},
    {SwitchElsewhere, QStringLiteral("switch the filter elsewhere"), 1},
};

} // namespace zorvane::tests::filter_actions
