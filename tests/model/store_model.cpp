#include "model/store_model.h"

#include "model/good_end.h"
#include "model/modelled_applications.h"
#include "model/store_actions.h"
#include "model/store_world.h"

namespace zorvane::tests
{

namespace
{

using namespace store_actions;

class StoreModel final : public Model
{
public:
    explicit StoreModel(quint32 seed)
        : m_world(seed)
    {
    }

    QString perform(const Step &step) override
    {
        const bool mightFail = m_world.answers().willFail();
        const QString broken = use(step) || answer(step) ? QString() : go(step, mightFail);
        // Another write is on its way then, too.
        m_world.stepEnded(mightFail || step.action == FinishActivation);
        return broken.isEmpty() ? m_world.run().broken() : broken;
    }

    QString finish() override { return GoodEnd(m_world).broken(); }

    [[nodiscard]] Counts happened() const override { return m_world.happened(); }

private:
    bool use(const Step &step)
    {
        const bool odd = step.number % 2 != 0;
        const auto &list = m_world.store().applications();
        WatchedStore &run = m_world.run();
        switch (step.action) {
        case Drop:
            run.drop(modelledPath(step.number));
            break;
        case Remove:
            if (!list.isEmpty())
                m_world.remove(list.at(step.number % list.size()));
            break;
        case RemoveUnlisted:
            m_world.remove(modelledApplication(step.number));
            break;
        case Reinspect:
            run.reinspect();
            break;
        case Switch:
            run.switchProtection(odd);
            break;
        case RefreshProtection:
            m_world.store().refreshProtection();
            break;
        case Explain:
            run.explain();
            break;
        case DismissAlert:
            run.dismissAlert();
            break;
        case CheckForUpdates:
            m_world.store().checkForUpdates(odd);
            break;
        default:
            return false;
        }
        return true;
    }

    bool answer(const Step &step)
    {
        // It may be the launch's answer that comes once more.
        if (step.action == Repeat)
            m_world.launchIsAnsweredAgain();
        return m_world.answers().answer(step);
    }

    QString rest(bool mightFail)
    {
        QString broken = m_world.rested();
        return broken.isEmpty() && !mightFail ? m_world.brokenRules() : broken;
    }

    QString go(const Step &step, bool mightFail)
    {
        using Between = StoreWorld::Between;
        const Between between = step.number % 4 == 0 ? Between::Damage : Between::Nothing;
        switch (step.action) {
        case Observe:
            observe(m_world.system(), m_world.observed(), step.number);
            return {};
        case ChangeBundle:
            m_world.bundles().change(step.number);
            return {};
        case Rest:
            return rest(mightFail);
        case StartAgain:
            return m_world.startAgain(between);
        case Kill:
            return m_world.killAndStartAgain(between);
        default:
            return m_world.answers().go(step) ? QString() : unknownAction;
        }
    }

    StoreWorld m_world;
};

} // namespace

ModelKind storeModel()
{
    return {actions, [](quint32 seed) { return std::make_unique<StoreModel>(seed); }};
}

} // namespace zorvane::tests
