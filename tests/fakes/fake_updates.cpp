#include "fakes/fake_updates.h"

namespace zorvane::tests
{

using platform::NotificationRequest;
using platform::PlatformError;

namespace
{

/** There is never more than one of an identifier. */
void putInPlace(QList<NotificationRequest> &requests, const NotificationRequest &request)
{
    requests.removeIf([&](const auto &each) { return each.identifier == request.identifier; });
    requests.append(request);
}

} // namespace

void FakeManifestFetcher::fetch(const platform::ManifestRequest &request, Completion done)
{
    requests.append(request);
    Result answer = PlatformError{QStringLiteral("network"), 1, QStringLiteral("down")};
    if (!answers.empty()) {
        answer = answers.front();
        answers.pop_front();
    }
    m_scheduler.runInBackground(
        platform::Priority::Utility, [done = std::move(done), answer] { done(answer); });
}

void FakeUserNotifications::authorization(
    std::function<void(platform::NotificationAuthorization)> done)
{
    answer([this, done = std::move(done)] { done(state); });
}

void FakeUserNotifications::requestAuthorization(
    std::function<void(bool, const std::optional<PlatformError> &)> done)
{
    ++authorizationRequests;
    answer([this, done = std::move(done)] { done(grants, authorizationError); });
}

void FakeUserNotifications::add(const NotificationRequest &request,
    std::function<void(const std::optional<PlatformError> &)> done)
{
    calls.append(QStringLiteral("add ") + request.identifier);
    if (!addError) {
        putInPlace(pending, request);
        m_scheduler.after(request.delay, [this, request] {
            if (pending.removeOne(request))
                putInPlace(delivered, request);
        });
    }
    answer([error = addError, done = std::move(done)] { done(error); });
}

void FakeUserNotifications::removePending(const QStringList &identifiers)
{
    calls.append(QStringLiteral("remove pending ") + identifiers.join(u' '));
    pending.removeIf([&](const auto &each) { return identifiers.contains(each.identifier); });
}

void FakeUserNotifications::removeDelivered(const QStringList &identifiers)
{
    calls.append(QStringLiteral("remove delivered ") + identifiers.join(u' '));
    delivered.removeIf([&](const auto &each) { return identifiers.contains(each.identifier); });
}

} // namespace zorvane::tests
