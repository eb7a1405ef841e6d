#include "model/modelled_system.h"

#include "model/known_errors.h"
#include "model/store_actions.h"

#include <algorithm>

namespace zorvane::tests
{

using namespace store_actions;
using platform::ActivationResult;

bool ModelledSystem::answer(const Step &step)
{
    auto &manager = m_system.filterManager;
    switch (step.action) {
    case Answer:
        if (!manager.held.isEmpty()) {
            m_answered = manager.held.takeAt(step.number % manager.held.size());
            m_answered();
        }
        break;
    case Repeat:
        if (m_answered)
            m_answered();
        break;
    case FailLoad:
        if (!m_isHealthy)
            manager.loadErrors.emplace_back(knownError(step.number).error);
        break;
    case FailSave:
        if (!m_isHealthy)
            manager.saveErrors.emplace_back(knownError(step.number).error);
        break;
    case NeedApproval:
    case FinishActivation:
    case FailActivation:
        activate(step);
        break;
    default:
        return false;
    }
    return true;
}

void ModelledSystem::activate(const Step &step)
{
    const auto delegate = m_system.systemExtensions.delegate();
    if (!delegate)
        return;
    if (step.action == NeedApproval)
        delegate->requestNeedsUserApproval();
    else if (step.action == FailActivation)
        delegate->requestDidFail(knownError(step.number).error);
    else
        delegate->requestDidFinish(ActivationResult(std::max(0, step.number % 8 - 5)));
}

bool ModelledSystem::go(const Step &step)
{
    auto &scheduler = m_system.scheduler;
    const bool odd = step.number % 2 != 0;
    switch (step.action) {
    case RunBackground:
        if (const qsizetype waiting = scheduler.waitingBackgroundJobs(); waiting > 0)
            scheduler.runBackgroundJob(step.number % waiting);
        break;
    case RunPosted:
        if (scheduler.postedJobs() > 0)
            scheduler.runFirstPosted();
        break;
    case Pass:
        scheduler.advance(std::chrono::milliseconds(step.number % 6000), [] {});
        break;
    case SetClock:
        scheduler.setNow(scheduler.now().addDays(step.number % 800 - 400));
        break;
    case Move:
        m_system.mainBundle.path = odd ? "/Applications/Zorvane.app" : "/Users/someone/Zorvane.app";
        break;
    case SwitchElsewhere:
        m_system.filterManager.stored.enabled = odd;
        break;
    default:
        return false;
    }
    return true;
}

void ModelledSystem::recover()
{
    m_system.filterManager.loadErrors.clear();
    m_system.filterManager.saveErrors.clear();
    m_system.mainBundle.path = "/Applications/Zorvane.app";
}

void ModelledSystem::comeToRest()
{
    // Several inspections of the same records may each undo what a pass has merged: the passes
    // after the last of them make up for it.
    constexpr auto somePasses = std::chrono::seconds(60);
    constexpr int mostRounds = 1000;
    auto &held = m_system.filterManager.held;
    std::chrono::seconds passed(0);
    for (int round = 0; passed < somePasses && round < mostRounds; ++round) {
        while (!held.isEmpty())
            held.takeFirst()();
        m_system.scheduler.settle();
        if (!held.isEmpty())
            continue;
        m_system.scheduler.advance(std::chrono::seconds(1));
        ++passed;
    }
}

bool ModelledSystem::isAnswering() const
{
    return !m_system.filterManager.held.isEmpty() || m_system.scheduler.postedJobs() > 0;
}

bool ModelledSystem::willFail() const
{
    return !m_system.filterManager.loadErrors.empty() || !m_system.filterManager.saveErrors.empty();
}

} // namespace zorvane::tests
