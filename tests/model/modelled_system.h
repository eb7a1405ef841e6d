#pragma once

#include "fakes/fake_platform.h"
#include "model/model.h"

#include <functional>

namespace zorvane::tests
{

/** What a modelled store's system does by itself: what it answers, and when, and how time passes.
 */
class ModelledSystem
{
public:
    explicit ModelledSystem(FakePlatform &system)
        : m_system(system)
    {
        system.filterManager.holdAnswers = true;
    }

    /** In a healthy system no load or save ever fails. */
    void setHealthy(bool healthy) { m_isHealthy = healthy; }
    /** Does the step if it is an answer or a failure of the system. False if it is not. */
    bool answer(const Step &step);
    /** Does the step if it is how work and time go on, or the system's own doing. False if it is
     * not. */
    bool go(const Step &step);
    /** From now on nothing fails, and the program stands where it belongs. */
    void recover();
    /** Lets all answers go and all jobs run, and enough time pass for the retries and some passes.
     */
    void comeToRest();
    /** True while a load or save, or what is to be done about its answer, is outstanding. */
    [[nodiscard]] bool isAnswering() const;
    /** True while a load or save is still to fail. */
    [[nodiscard]] bool willFail() const;

private:
    void activate(const Step &step);

    FakePlatform &m_system;
    std::function<void()> m_answered;
    bool m_isHealthy = false;
};

} // namespace zorvane::tests
