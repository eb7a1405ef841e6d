#pragma once

#include "model/model.h"

/** @file What happens to a store in its model. */
namespace zorvane::tests::store_actions
{

/** Their names and weights, in the order of the enumeration below. */
inline const QList<Action> actions{{QStringLiteral("drop"), 7}, {QStringLiteral("remove"), 2},
    {QStringLiteral("remove what is not listed"), 1}, {QStringLiteral("inspect stale records"), 1},
    {QStringLiteral("switch protection"), 3}, {QStringLiteral("refresh protection"), 2},
    {QStringLiteral("explain and dismiss"), 1}, {QStringLiteral("check for updates"), 1},
    {QStringLiteral("answer"), 16}, {QStringLiteral("repeat an answer"), 2},
    {QStringLiteral("fail the next load"), 2}, {QStringLiteral("fail the next save"), 3},
    {QStringLiteral("need approval"), 2}, {QStringLiteral("finish activation"), 3},
    {QStringLiteral("fail activation"), 2}, {QStringLiteral("run in the background"), 24},
    {QStringLiteral("run on the main thread"), 24}, {QStringLiteral("let time pass"), 8},
    {QStringLiteral("set the clock"), 1}, {QStringLiteral("observe"), 7},
    {QStringLiteral("change a bundle"), 3}, {QStringLiteral("move the program"), 1},
    {QStringLiteral("switch the filter elsewhere"), 1}, {QStringLiteral("start again"), 1}};

enum Kind {
    Drop,
    Remove,
    RemoveUnlisted,
    Reinspect,
    Switch,
    RefreshProtection,
    Explain,
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
    StartAgain,
};

} // namespace zorvane::tests::store_actions
