#include "platform/simulated/filter_manager.h"

#include "platform/scheduler.h"
#include "platform/simulated/json_file.h"
#include "platform/simulated/simulated_system.h"

namespace zorvane::platform::simulated
{

namespace
{

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// Long enough for the window to show that something is going on, short enough not to wait for.
constexpr auto answerDelay = 50ms;

constexpr qint64 configurationInvalid = 1;
constexpr qint64 internalError = 6;

PlatformError filterError(qint64 code, const QString &description)
{
    return {u"NEFilterErrorDomain"_s, code, description};
}

} // namespace

SimulatedFilterManager::SimulatedFilterManager(
    std::shared_ptr<SimulatedSystem> system, Scheduler &scheduler)
    : m_system(std::move(system))
    , m_scheduler(scheduler)
    , m_queue(scheduler.makeSerialQueue("zorvane.filter"))
{
}

SimulatedFilterManager::~SimulatedFilterManager() = default;

void SimulatedFilterManager::load(Completion done)
{
    auto loaded = std::make_shared<FilterConfiguration>(QJsonObject());
    // The copy is replaced on the main thread: between another load's answer and its save it must
    // not change.
    run([this, loaded] { return loadNow(*loaded); }, [this, loaded] { m_copy = *loaded; },
        std::move(done));
}

void SimulatedFilterManager::save(Completion done)
{
    m_copy.setEnabled(m_copy.isEnabled()); // so that the file says it in any case
    run([this, configuration = m_copy] { return saveNow(configuration); }, [] {}, std::move(done));
}

bool SimulatedFilterManager::isEnabled() const
{
    return m_copy.isEnabled();
}

void SimulatedFilterManager::setEnabled(bool enabled)
{
    m_copy.setEnabled(enabled);
}

void SimulatedFilterManager::setProviderConfiguration(
    const FilterProviderConfiguration &configuration)
{
    m_copy.setProviderConfiguration(configuration);
}

void SimulatedFilterManager::setLocalizedDescription(const QString &description)
{
    m_copy.setLocalizedDescription(description);
}

void SimulatedFilterManager::run(Work work, Job succeeded, Completion done)
{
    // The work starts at once. Its answer follows after a turn of the main loop, so that the call
    // has returned by then, behind what was asked for before, and from a thread of the system's.
    auto error = std::make_shared<std::optional<PlatformError>>();
    m_queue->add([work = std::move(work), error] { *error = work(); });
    auto finish = onMainThread(m_scheduler, m_lifetime.watch(),
        [this, error, succeeded = std::move(succeeded), done = std::move(done)] {
            if (!*error)
                succeeded();
            m_queue->add([error, done] { done(*error); });
        });
    m_scheduler.after(answerDelay, [this, alive = m_lifetime.watch(), finish = std::move(finish)] {
        if (!alive.expired())
            m_queue->add(finish);
    });
}

std::optional<PlatformError> SimulatedFilterManager::loadNow(FilterConfiguration &loaded) const
{
    if (auto fault = m_system->takeFault(Operation::Load))
        return fault;
    loaded = FilterConfiguration(
        readJsonFile(m_system->filterConfigurationFile()).value_or(QJsonObject()));
    return std::nullopt;
}

std::optional<PlatformError> SimulatedFilterManager::saveNow(
    const FilterConfiguration &configuration)
{
    if (auto fault = m_system->takeFault(Operation::Save))
        return fault;
    if (!configuration.hasProviderConfiguration())
        return filterError(configurationInvalid, u"The filter configuration is invalid."_s);
    const auto error = changeJsonFile(m_system->filterConfigurationFile(),
        [&configuration](QJsonObject &object) { object = configuration.object(); });
    if (error)
        return filterError(
            internalError, u"The filter configuration could not be stored: %1."_s.arg(*error));
    return std::nullopt;
}

} // namespace zorvane::platform::simulated
