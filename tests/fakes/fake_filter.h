#pragma once

#include "platform/filter_manager.h"
#include "platform/scheduler.h"
#include "platform/system_extensions.h"

#include <deque>
#include <QList>

namespace zorvane::tests
{

/** A stored filter configuration and the copy that a program works on; answers are scripted. Saves
 * are stored in the order of their calls, whenever their answers come. */
class FakeFilterManager final : public platform::FilterManager
{
public:
    explicit FakeFilterManager(platform::Scheduler &scheduler)
        : m_scheduler(scheduler)
    {
    }

    void load(Completion done) override;
    void save(Completion done) override;
    [[nodiscard]] bool isEnabled() const override { return m_copy.enabled; }
    void setEnabled(bool enabled) override { m_copy.enabled = enabled; }
    void setProviderConfiguration(
        const platform::FilterProviderConfiguration &configuration) override
    {
        m_copy.provider = configuration;
    }
    void setLocalizedDescription(const QString &description) override
    {
        m_copy.localizedDescription = description;
    }

    struct Configuration {
        bool enabled = false;
        std::optional<platform::FilterProviderConfiguration> provider;
        QString localizedDescription;
    };

    /** What the system has stored. */
    Configuration stored;
    /** The errors of the next loads and saves, in order; then they succeed. */
    std::deque<std::optional<platform::PlatformError>> loadErrors;
    std::deque<std::optional<platform::PlatformError>> saveErrors;
    /** While true, answers wait in held until a test lets them go; one that is let go again is only
     * repeated. */
    bool holdAnswers = false;
    QList<std::function<void()>> held;
    int loads = 0;
    int saves = 0;

private:
    void answer(std::function<void()> job);

    platform::Scheduler &m_scheduler;
    Configuration m_copy;
};

/** Records the requests; a test plays the system's part. */
class FakeSystemExtensions final : public platform::SystemExtensions
{
public:
    [[nodiscard]] std::unique_ptr<platform::ActivationRequest> submitActivation(
        const QString &identifier, std::weak_ptr<platform::ActivationDelegate> delegate) override;

    [[nodiscard]] bool isOutstanding() const { return outstanding > 0; }
    /** The latest request's delegate; null when it is gone. */
    [[nodiscard]] std::shared_ptr<platform::ActivationDelegate> delegate() const
    {
        return m_delegate.lock();
    }

    QStringList submitted;
    int outstanding = 0;
    /** True once a request was submitted while another was still held by the program. */
    bool overlapping = false;

private:
    std::weak_ptr<platform::ActivationDelegate> m_delegate;
};

} // namespace zorvane::tests
