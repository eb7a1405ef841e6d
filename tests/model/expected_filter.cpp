#include "model/expected_filter.h"

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace zorvane::tests
{

using filter::FilterStatus;
using platform::ActivationResult;
using Status = FilterStatus::Kind;

namespace
{

std::optional<KnownError> takeFirst(std::deque<KnownError> &errors)
{
    if (errors.empty())
        return std::nullopt;
    KnownError error = errors.front();
    errors.pop_front();
    return error;
}

} // namespace

void ExpectedFilter::setStatus(const FilterStatus &value)
{
    status = value;
    ++announcements;
}

void ExpectedFilter::setStatus(const KnownError &error)
{
    setStatus(error.isApproval ? FilterStatus(Status::AwaitingApproval)
                               : FilterStatus::failed(error.error.description));
}

void ExpectedFilter::load(Call call)
{
    ++loads;
    call.error = takeFirst(loadErrors);
    m_waiting.append(call);
}

void ExpectedFilter::refreshStatus(const std::optional<Rules> &rules)
{
    if (isInApplications)
        load({.kind = Call::Kind::RefreshLoad, .error = {}, .rules = rules, .write = {}});
    else
        setStatus(Status::InstallationRequired);
}

void ExpectedFilter::requestActivation(const Rules &rules)
{
    m_pending = rules;
    if (!isInApplications) {
        setStatus(Status::InstallationRequired);
    } else if (!hasRequest) {
        setStatus(Status::Activating);
        hasRequest = true;
        ++submissions;
    }
}

void ExpectedFilter::applyRules(const Rules &rules)
{
    m_pending = rules;
    startWrite(std::nullopt);
}

void ExpectedFilter::disableFilter()
{
    startWrite(false);
}

void ExpectedFilter::startWrite(std::optional<bool> enabled)
{
    newest = m_pending;
    load({.kind = Call::Kind::WriteLoad,
        .error = {},
        .rules = {},
        .write = {++m_generation, m_pending, extension, enabled, 0}});
}

void ExpectedFilter::answer(qsizetype position)
{
    constexpr qsizetype mostRemembered = 4;
    const Call call = m_waiting.takeAt(position);
    if (!call.error && call.kind != Call::Kind::Save)
        copy = stored;
    m_posted.emplace_back(call);
    m_answered.append(call);
    if (m_answered.size() > mostRemembered)
        m_answered.removeFirst();
}

void ExpectedFilter::repeat(qsizetype position)
{
    m_posted.emplace_back(m_answered.at(position));
}

void ExpectedFilter::runFirstPosted()
{
    const Event event = m_posted.front();
    m_posted.pop_front();
    std::visit([this](const auto &each) { happen(each); }, event);
}

void ExpectedFilter::pass(std::chrono::milliseconds duration)
{
    m_elapsed += duration;
    while (!m_retries.empty() && m_retries.front().first <= m_elapsed) {
        const Write write = m_retries.front().second;
        m_retries.pop_front();
        retry(write);
    }
}

void ExpectedFilter::retry(Write write)
{
    if (write.generation != m_generation)
        return;
    ++write.attempt;
    ++retries;
    load({.kind = Call::Kind::WriteLoad, .error = {}, .rules = {}, .write = write});
}

void ExpectedFilter::happen(NeedsApproval)
{
    setStatus(Status::AwaitingApproval);
}

void ExpectedFilter::happen(ActivationResult result)
{
    hasRequest = false;
    if (result == ActivationResult::Completed)
        startWrite(true);
    else if (result == ActivationResult::WillCompleteAfterReboot)
        setStatus(FilterStatus::failed(u"Restart your Mac to finish installing the extension."_s));
    else
        setStatus(
            FilterStatus::failed(u"The extension installation finished with an unknown result."_s));
}

void ExpectedFilter::happen(const ActivationError &failure)
{
    hasRequest = false;
    if (!isInApplications || failure.error.namesApplications)
        setStatus(Status::InstallationRequired);
    else
        setStatus(failure.error);
}

void ExpectedFilter::happen(const Call &call)
{
    if (call.kind != Call::Kind::RefreshLoad && call.write.generation != m_generation) {
        ++staleAnswers;
        return;
    }
    switch (call.kind) {
    case Call::Kind::RefreshLoad:
        refreshed(call);
        return;
    case Call::Kind::WriteLoad:
        loadedForWrite(call);
        return;
    case Call::Kind::Save:
        saved(call);
        return;
    }
}

void ExpectedFilter::refreshed(const Call &call)
{
    if (call.error) {
        setStatus(*call.error);
        return;
    }
    // By now the copy may be newer than this answer.
    const bool enabled = copy.enabled;
    const bool keepsWaiting = hasRequest && status == Status::AwaitingApproval;
    setStatus(enabled      ? Status::Enabled
            : keepsWaiting ? Status::AwaitingApproval
                           : Status::Inactive);
    if (enabled && call.rules)
        requestActivation(*call.rules);
}

void ExpectedFilter::loadedForWrite(const Call &call)
{
    if (call.error) {
        newest.reset();
        setStatus(*call.error);
        return;
    }
    copy
        = {call.write.enabled.value_or(copy.enabled), true, call.write.rules, call.write.extension};
    ++saves;
    const auto error = takeFirst(saveErrors);
    if (!error)
        stored = copy;
    m_waiting.append({.kind = Call::Kind::Save, .error = error, .rules = {}, .write = call.write});
}

void ExpectedFilter::saved(const Call &call)
{
    constexpr int mostRetries = 3;
    if (call.error && call.error->isPermission && call.write.attempt == mostRetries)
        ++lastRetriesFailed;
    if (!call.error) {
        refreshStatus(std::nullopt);
    } else if (call.error->isPermission && call.write.attempt < mostRetries) {
        m_retries.emplace_back(m_elapsed + 1500ms, call.write);
    } else {
        newest.reset();
        setStatus(*call.error);
    }
}

} // namespace zorvane::tests
