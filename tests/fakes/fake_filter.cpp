#include "fakes/fake_filter.h"

#include <utility>

namespace zorvane::tests
{

namespace
{

class CountedRequest final : public platform::ActivationRequest
{
public:
    explicit CountedRequest(int &count)
        : m_count(count)
    {
        ++m_count;
    }
    ~CountedRequest() override { --m_count; }

private:
    int &m_count;
};

std::optional<platform::PlatformError> takeFirst(
    std::deque<std::optional<platform::PlatformError>> &errors)
{
    if (errors.empty())
        return std::nullopt;
    auto error = errors.front();
    errors.pop_front();
    return error;
}

} // namespace

void FakeFilterManager::load(Completion done)
{
    ++loads;
    answer([this, done, error = takeFirst(loadErrors), isFirst = true]() mutable {
        if (std::exchange(isFirst, false) && !error)
            m_copy = stored;
        done(error);
    });
}

void FakeFilterManager::save(Completion done)
{
    ++saves;
    const auto error = takeFirst(saveErrors);
    if (!error)
        stored = m_copy;
    answer([done, error] { done(error); });
}

void FakeFilterManager::answer(std::function<void()> job)
{
    if (holdAnswers)
        held.append(std::move(job));
    else
        m_scheduler.runInBackground(platform::Priority::Utility, std::move(job));
}

std::unique_ptr<platform::ActivationRequest> FakeSystemExtensions::submitActivation(
    const QString &identifier, std::weak_ptr<platform::ActivationDelegate> delegate)
{
    submitted.append(identifier);
    overlapping = overlapping || isOutstanding();
    m_delegate = std::move(delegate);
    return std::make_unique<CountedRequest>(outstanding);
}

} // namespace zorvane::tests
