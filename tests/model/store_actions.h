#pragma once

#include "model/model.h"

/** @file What happens to a store in its model. */
namespace zorvane::tests::store_actions
{

enum Kind {
    Drop,
    Remove,
    RemoveUnlisted,
    Reinspect,
    Switch,
    RefreshProtection,
    Explain,
    DismissAlert,
    CheckForUpdates,
    Answer,
    Repeat,
    FailLoad,
    FailSave,
    NeedApproval,
    FinishActivation,
    FailActivation,
    RunBackground,
    RunPosted,
    Pass,
    SetClock,
    Observe,
    ChangeBundle,
    Move,
    SwitchElsewhere,
    Rest,
    StartAgain,
    Kill,
};

/** Their names and weights. */
inline const QList<Action> actions{
    {Drop, QStringLiteral("drop"), 7},
    {Remove, QStringLiteral("remove"), 2},
    {RemoveUnlisted, QStringLiteral("remove what is not listed"), 1},
    {Reinspect, QStringLiteral("inspect stale records"), 1},
    {Switch, QStringLiteral("switch protection"), 3},
    {RefreshProtection, QStringLiteral("refresh protection"), 2},
    {Explain, QStringLiteral("explain"), 1},
    {DismissAlert, QStringLiteral("dismiss the alert"), 1},
    {CheckForUpdates, QStringLiteral("check for updates"), 1},
    {Answer, QStringLiteral("answer"), 16},
    {Repeat, QStringLiteral("repeat an answer"), 2},
    {FailLoad, QStringLiteral("fail the next load"), 2},
    {FailSave, QStringLiteral("fail the next save"), 3},
    {NeedApproval, QStringLiteral("need approval"), 2},
    {FinishActivation, QStringLiteral("finish activation"), 3},
    {FailActivation, QStringLiteral("fail activation"), 2},
    {RunBackground, QStringLiteral("run in the background"), 24},
    {RunPosted, QStringLiteral("run on the main thread"), 24},
    {Pass, QStringLiteral("let time pass"), 8},
    {SetClock, QStringLiteral("set the clock"), 1},
    {Observe, QStringLiteral("observe"), 7},
    {ChangeBundle, QStringLiteral("change a bundle"), 3},
    {Move, QStringLiteral("move the program"), 1},
    {SwitchElsewhere, QStringLiteral("switch the filter elsewhere"), 1},
    {Rest, QStringLiteral("come to rest"), 1},
    {StartAgain, QStringLiteral("start again"), 1},
    {Kill, QStringLiteral("kill and start again"), 1},
};

} // namespace zorvane::tests::store_actions
