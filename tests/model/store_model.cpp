#include "model/store_model.h"

#include "model/damaged_list.h"
#include "model/list_changes.h"
#include "model/modelled_applications.h"
#include "model/modelled_system.h"
#include "model/seen_filter.h"
#include "model/store_actions.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

using namespace store_actions;
using platform::ActivationResult;

class StoreModel final : public Model
{
public:
    explicit StoreModel(quint32 seed)
    {
        QRandomGenerator random(seed);
        const auto any = [&random] { return int(random.bounded(1 << 16)); };
        for (int i = 0; i < modelledApplications; ++i)
            changeBundle(m_fixture.system, m_possible,
                any() / modelledApplications * modelledApplications + i);
        storeSomething(m_fixture.system.preferences, any());
        m_damaged.watch(m_fixture.system);
        m_fixture.system.filterManager.stored.enabled = any() % 2 == 0;
        m_system.setHealthy(any() % 2 == 0);
        if (const int wish = any() % 3; wish != 2)
            m_fixture.system.preferences.values.insert(u"protectionRequested"_s, wish == 1);
        start();
    }
    ~StoreModel() override { end(); }

    QString perform(const Step &step) override
    {
        const bool mightFail = m_system.willFail();
        if (step.action <= CheckForUpdates)
            use(step);
        else if (step.action <= FailActivation)
            m_system.answer(step);
        else
            go(step);
        // Another write is on its way, or the last may fail.
        if (step.action == FinishActivation || mightFail || m_system.willFail())
            m_newest.reset();
        m_launchIsUnanswered = m_launchIsUnanswered && m_system.isAnswering();
        return broken();
    }

    /** A healthy system and one more wish: then the filter blocks just what is listed. */
    QString finish() override
    {
        const auto &extensions = m_fixture.system.systemExtensions;
        m_system.recover();
        m_system.comeToRest();
        if (m_newest && m_newest->wishes == writtenWishes()) {
            ++m_happened[u"newest rules at rest"_s];
            if (storedRules() != m_newest->rules)
                return u"the newest rules are not the stored ones"_s;
        }
        m_store->setProtectionEnabled(true);
        m_system.comeToRest();
        if (extensions.isOutstanding())
            extensions.delegate()->requestDidFinish(ActivationResult::Completed);
        m_system.comeToRest();
        if (!m_store->isProtectionEnabled())
            return u"not enabled after a good activation"_s;
        if (storedRules() != shownRules())
            return u"the filter's rules are not those of the list"_s;
        return broken();
    }

    [[nodiscard]] Counts happened() const override
    {
        Counts result = m_happened;
        result[u"damaged list set aside"_s] = m_damaged.isSetAside() ? 1 : 0;
        return result;
    }

private:
    void start()
    {
        auto &preferences = m_fixture.system.preferences;
        preferences.written.clear();
        m_atStart = preferences.data(listKey).value_or(QByteArray());
        m_fixture.system.fileAccess.begun = 0;
        m_fixture.system.fileAccess.ended = 0;
        m_newest.reset();
        m_launchIsUnanswered = false;
        m_changes = ListChanges(m_fixture.storedList(), m_possible);
        m_store = std::make_unique<app::AppBlockStore>(m_fixture.system.ports);
        QObject::connect(m_store.get(), &app::AppBlockStore::applicationsChanged, m_store.get(),
            [this] { listChanged(); });
        QObject::connect(m_store->filterController(), &filter::FilterController::statusChanged,
            m_store.get(), [this] { statusChanged(); });
    }

    /** What was saved is on its way to the disk; all else ends with the program. */
    void end()
    {
        m_store.reset();
        m_fixture.system.scheduler.shutDown();
    }

    void use(const Step &step)
    {
        const bool odd = step.number % 2 != 0;
        const auto &list = m_store->applications();
        switch (step.action) {
        case Drop:
            if (!m_store->isAddingApplication())
                m_changes.dropped(modelledPath(step.number));
            m_store->addApplication(QUrl::fromLocalFile(modelledPath(step.number)));
            break;
        case Remove:
            if (!list.isEmpty())
                remove(list.at(step.number % list.size()));
            break;
        case RemoveUnlisted:
            if (m_store->hasLoadedApplications())
                remove(modelledApplication(step.number));
            break;
        case Reinspect:
            m_changes.reinspecting();
            m_store->reinspectStaleApplications();
            break;
        case Switch:
            m_store->setProtectionEnabled(odd);
            break;
        case RefreshProtection:
            m_store->refreshProtection();
            break;
        case Explain:
            m_store->explainProtectionUnavailable();
            m_store->dismissAlert();
            break;
        case CheckForUpdates:
            m_store->checkForUpdates(odd);
            break;
        default:
            break;
        }
    }

    void remove(const records::BlockedApplication &application)
    {
        m_changes.removing(application.id);
        m_store->remove(application);
        pushed();
    }

    void listChanged()
    {
        const QString event = m_changes.changed(m_store->applications());
        ++m_happened[event];
        if (event == u"load"_s)
            m_launchIsUnanswered = true;
        // An addition pushes only once it has written the wish, with its activation.
        else if (m_store->isProtectionEnabled())
            pushed();
    }

    /** A write of the rules as they are now has begun. The answer to the launch's look at the
     * filter brings the rules of the launch once more. */
    void pushed()
    {
        m_newest.reset();
        if (!m_launchIsUnanswered)
            m_newest = Push{shownRules(), writtenWishes()};
    }

    void go(const Step &step)
    {
        switch (step.action) {
        case Observe:
            observe(m_fixture.system, m_possible, step.number);
            break;
        case ChangeBundle:
            changeBundle(m_fixture.system, m_possible, step.number);
            break;
        case StartAgain:
            end();
            start();
            break;
        default:
            m_system.go(step);
            break;
        }
    }

    void statusChanged()
    {
        using Status = filter::FilterStatus::Kind;
        const auto &system = m_fixture.system;
        const Status status = m_store->filterController()->status().kind();
        if (status == Status::Enabled && !system.filterManager.isEnabled())
            m_wrongStatus = u"enabled while the configuration is not"_s;
        if (status == Status::Inactive && system.filterManager.isEnabled())
            m_wrongStatus = u"inactive while the configuration is enabled"_s;
        if (m_store->isProtectionEnabled() != (status == Status::Enabled))
            m_wrongStatus = u"the switch does not follow the status"_s;
    }

    [[nodiscard]] QString broken() const
    {
        const auto &system = m_fixture.system;
        if (m_damaged.isLost())
            return u"a damaged list was overwritten before it was set aside"_s;
        if (system.systemExtensions.overlapping)
            return u"activation was requested again while a request was outstanding"_s;
        if (!m_wrongStatus.isEmpty())
            return m_wrongStatus;
        if (!m_changes.broken().isEmpty())
            return m_changes.broken();
        if (m_store->applications() != m_changes.shown())
            return u"the list changed without a word"_s;
        const int inUse = system.fileAccess.begun - system.fileAccess.ended;
        if (inUse != (m_store->isAddingApplication() ? 1 : 0))
            return u"%1 dropped items are in use"_s.arg(inUse);
        return brokenStorage();
    }

    /** What is saved is what is shown, as soon as nothing is under way. */
    [[nodiscard]] QString brokenStorage() const
    {
        const auto &system = m_fixture.system;
        if (system.preferences.written.contains(listKey)) {
            if (!m_store->hasLoadedApplications())
                return u"saved before the list was loaded"_s;
            if (system.scheduler.waitingBackgroundJobs() == 0
                && m_fixture.storedList() != m_store->applications())
                return u"what is saved is not what is shown"_s;
        } else if (system.preferences.data(listKey).value_or(QByteArray()) != m_atStart) {
            return u"the stored list changed without being saved"_s;
        } else if (system.scheduler.waitingBackgroundJobs() == 0 && m_store->hasLoadedApplications()
            && m_fixture.storedList() != m_store->applications()) {
            return u"what is shown was never saved"_s;
        }
        return {};
    }

    [[nodiscard]] Rules storedRules() const
    {
        return storedConfiguration(m_fixture.system.filterManager).rules;
    }

    [[nodiscard]] Rules shownRules() const
    {
        QStringList paths = m_store->blockedApplicationPaths();
        // Two applications may have stood at one path, one after the other.
        paths.removeDuplicates();
        return {m_store->blockedCodeIdentityKeys(), paths};
    }

    /** How often the wish for protection was written; other rules may follow each time. */
    [[nodiscard]] qsizetype writtenWishes() const
    {
        return m_fixture.system.preferences.written.count(u"protectionRequested"_s);
    }

    /** What a write that was begun and is not known to fail has to leave stored, as long as the
     * wish is not written again. */
    struct Push {
        Rules rules;
        qsizetype wishes = 0;
    };

    StoreFixture m_fixture;
    ModelledSystem m_system{m_fixture.system};
    DamagedList m_damaged;
    std::unique_ptr<app::AppBlockStore> m_store;
    QByteArray m_atStart;
    PossibleRecords m_possible;
    ListChanges m_changes{{}, m_possible};
    std::optional<Push> m_newest;
    bool m_launchIsUnanswered = false;
    QString m_wrongStatus;
    Counts m_happened{{u"load"_s, 0}, {u"addition"_s, 0}, {u"removal"_s, 0},
        {u"re-inspection"_s, 0}, {u"another application"_s, 0}, {u"merge"_s, 0},
        {u"newest rules at rest"_s, 0}};
};

} // namespace

ModelKind storeModel()
{
    return {actions, [](quint32 seed) { return std::make_unique<StoreModel>(seed); }};
}

} // namespace zorvane::tests
