#include "model/filter_model.h"

#include "filter/controller_fixture.h"
#include "model/expected_filter.h"
#include "model/filter_actions.h"
#include "model/handed_rules.h"
#include "model/seen_filter.h"

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

using namespace filter_actions;
using platform::ActivationResult;
using Status = filter::FilterStatus::Kind;

constexpr std::chrono::milliseconds retryDelay(1500);

class FilterModel final : public Model
{
public:
    FilterModel()
    {
        m_real.manager.holdAnswers = true;
        m_expected.extension = u"dev.kestrelworks.Zorvane.FilterExtension"_s;
        QObject::connect(m_real.controller.get(), &filter::FilterController::statusChanged,
            m_real.controller.get(), [this] {
                ++m_announcements;
                ++m_statuses[nameOf(m_real.controller->status())];
            });
        for (const auto kind : {Status::Inactive, Status::InstallationRequired, Status::Activating,
                 Status::AwaitingApproval, Status::Enabled})
            m_statuses[nameOf(kind)] = 0;
        m_statuses[nameOf(filter::FilterStatus::failed({}))] = 0;
    }
    /** The controller may be held by a retry, which goes while its services are still there. */
    ~FilterModel() override { m_real.scheduler.shutDown(); }

    QString perform(const Step &step) override
    {
        return ask(step) || answer(step) || change(step) ? broken() : unknownAction;
    }

    /** All answers come, without further errors; then one more round has to leave the newest rules
     * with the filter on. */
    QString finish() override
    {
        m_expected.loadErrors.clear();
        m_expected.saveErrors.clear();
        m_real.manager.loadErrors.clear();
        m_real.manager.saveErrors.clear();
        perform({Rest, 1});
        if (m_expected.newest && storedConfiguration(m_real.manager).rules != *m_expected.newest)
            return u"the rules of the last write are not the stored ones"_s;
        perform({Move, 1});
        perform({RequestActivation, 5});
        perform({FinishActivation, 0});
        comeToRest();
        if (QString found = broken(); !found.isEmpty())
            return found;
        const auto rules = handedRules(5).kept;
        if (m_real.storedKeys() != rules.keys || m_real.storedPaths() != rules.paths)
            return u"the newest rules are not the stored ones"_s;
        if (m_real.controller->status() != Status::Enabled)
            return u"not enabled after a good activation: "_s
                + described(m_real.controller->status());
        return {};
    }

    [[nodiscard]] Counts happened() const override
    {
        Counts result = m_statuses;
        result[u"retry"_s] = m_expected.retries;
        result[u"last retry failed"_s] = m_expected.lastRetriesFailed;
        result[u"stale answer"_s] = m_expected.staleAnswers;
        return result;
    }

private:
    bool ask(const Step &step)
    {
        auto &controller = *m_real.controller;
        const HandedRules rules = handedRules(step.number);
        switch (step.action) {
        case Refresh:
            controller.refreshStatus();
            m_expected.refreshStatus(std::nullopt);
            break;
        case RefreshWithRules:
            controller.refreshStatus(rules.handed.keys, rules.handed.paths);
            m_expected.refreshStatus(rules.kept);
            break;
        case RequestActivation:
            controller.requestActivation(rules.handed.keys, rules.handed.paths);
            m_expected.requestActivation(rules.kept);
            break;
        case ApplyRules:
            controller.applyRules(rules.handed.keys, rules.handed.paths);
            m_expected.applyRules(rules.kept);
            break;
        case Disable:
            controller.disableFilter();
            m_expected.disableFilter();
            break;
        default:
            return false;
        }
        return true;
    }

    bool answer(const Step &step)
    {
        const KnownError &error = knownError(step.number);
        switch (step.action) {
        case Answer:
            letGo(step.number);
            break;
        case Repeat:
            if (!m_answered.isEmpty()) {
                m_expected.repeat(step.number % m_answered.size());
                m_answered[step.number % m_answered.size()]();
            }
            break;
        case RunPosted:
            if (m_real.scheduler.postedJobs() > 0 && m_expected.posted() > 0) {
                m_real.scheduler.runFirstPosted();
                m_expected.runFirstPosted();
            }
            break;
        case FailLoad:
            m_real.manager.loadErrors.emplace_back(error.error);
            m_expected.loadErrors.push_back(error);
            break;
        case FailSave:
            failSave(error);
            break;
        case FailSavesForWantOfPermission:
            for (int i = 0; i < 4; ++i)
                failSave(knownErrors.front());
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

    void failSave(const KnownError &error)
    {
        m_real.manager.saveErrors.emplace_back(error.error);
        m_expected.saveErrors.push_back(error);
    }

    void letGo(int number)
    {
        auto &held = m_real.manager.held;
        if (held.isEmpty() || held.size() != m_expected.waiting())
            return;
        const qsizetype position = number % held.size();
        m_expected.answer(position);
        m_answered.append(held.takeAt(position));
        m_answered.last()();
        if (m_answered.size() > m_expected.answered())
            m_answered.removeFirst();
    }

    /** Also when no request waits for it: late, twice, or out of nothing. */
    void activate(const Step &step)
    {
        const auto delegate = m_real.extensions.delegate();
        if (!delegate)
            return;
        if (delegate->actionForReplacingExtension() != platform::ReplacementAction::Replace)
            m_refusedReplacement = true;
        if (step.action == NeedApproval) {
            delegate->requestNeedsUserApproval();
            m_expected.needApproval();
        } else if (step.action == FinishActivation) {
            // Mostly well; sometimes after a restart, or with a result of a later system.
            const auto result = ActivationResult(std::max(0, step.number % 8 - 5));
            delegate->requestDidFinish(result);
            m_expected.finish(result);
        } else {
            delegate->requestDidFail(knownError(step.number).error);
            m_expected.fail(knownError(step.number));
        }
    }

    bool change(const Step &step)
    {
        const bool odd = step.number % 2 != 0;
        switch (step.action) {
        case Pass:
            pass(step.number % 4 == 0 ? retryDelay : std::chrono::milliseconds(step.number % 2000));
            break;
        case Rest:
            comeToRest();
            for (int i = 0; i < step.number % 5; ++i) {
                pass(retryDelay);
                comeToRest();
            }
            break;
        case SetClock:
            m_real.scheduler.setNow(m_real.scheduler.now().addDays(step.number % 800 - 400));
            break;
        case Move:
            m_real.mainBundle.path
                = odd ? "/Applications/Zorvane.app" : "/Users/someone/Downloads/Zorvane.app";
            m_expected.isInApplications = odd;
            break;
        case Rename:
            m_real.mainBundle.bundleIdentifier
                = odd ? std::optional(u"dev.kestrelworks.Zorvane"_s) : std::nullopt;
            m_expected.extension = odd ? u"dev.kestrelworks.Zorvane.FilterExtension"_s
                                       : u"com.example.Zorvane.FilterExtension"_s;
            break;
        case SwitchElsewhere:
            m_real.manager.stored.enabled = odd;
            m_expected.stored.enabled = odd;
            break;
        default:
            return false;
        }
        return true;
    }

    void pass(std::chrono::milliseconds duration)
    {
        m_real.scheduler.advance(duration, [] {});
        m_expected.pass(duration);
    }

    void comeToRest()
    {
        while (m_expected.waiting() + m_expected.posted() > 0 && broken().isEmpty()) {
            letGo(0);
            answer({RunPosted, 0});
        }
    }

    [[nodiscard]] QString broken() const
    {
        const auto &manager = m_real.manager;
        if (m_real.extensions.overlapping)
            return u"activation was requested again while a request was outstanding"_s;
        if (m_real.extensions.isOutstanding() != m_expected.hasRequest
            || m_real.extensions.submitted.size() != m_expected.submissions)
            return u"a request too many, or too few"_s;
        if (m_real.controller->status() != m_expected.status)
            return u"the status is %1, not %2"_s.arg(
                described(m_real.controller->status()), described(m_expected.status));
        if (m_announcements != m_expected.announcements)
            return u"the status was announced %1 times, not %2"_s.arg(m_announcements)
                .arg(m_expected.announcements);
        if (manager.loads != m_expected.loads || manager.saves != m_expected.saves)
            return u"%1 loads and %2 saves, not %3 and %4"_s.arg(manager.loads)
                .arg(manager.saves)
                .arg(m_expected.loads)
                .arg(m_expected.saves);
        if (m_real.scheduler.postedJobs() != m_expected.posted())
            return u"an answer did not cross to the main thread once"_s;
        if (storedConfiguration(m_real.manager) != m_expected.stored)
            return u"other rules are stored than the newest that were saved"_s;
        if (manager.isEnabled() != m_expected.copy.enabled)
            return u"the copy is switched otherwise"_s;
        return m_refusedReplacement ? u"an installed extension was not replaced"_s : QString();
    }

    ControllerFixture m_real;
    ExpectedFilter m_expected;
    QList<std::function<void()>> m_answered;
    int m_announcements = 0;
    Counts m_statuses;
    bool m_refusedReplacement = false;
};

} // namespace

ModelKind filterModel()
{
    return {actions, [](quint32) { return std::make_unique<FilterModel>(); }};
}

} // namespace zorvane::tests
