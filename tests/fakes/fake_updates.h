#pragma once

#include "platform/manifest_fetcher.h"
#include "platform/scheduler.h"
#include "platform/user_notifications.h"

#include <deque>
#include <functional>
#include <QList>
#include <QStringList>

namespace zorvane::tests
{

/** Records the requests; they are answered with what a test has prepared, in order. */
class FakeManifestFetcher final : public platform::ManifestFetcher
{
public:
    explicit FakeManifestFetcher(platform::Scheduler &scheduler)
        : m_scheduler(scheduler)
    {
    }

    void fetch(const platform::ManifestRequest &request, Completion done) override;

    /** The next answers; without any, the network is down. */
    std::deque<Result> answers;
    QList<platform::ManifestRequest> requests;

private:
    platform::Scheduler &m_scheduler;
};

/** A notification centre without a screen: a test lets the time pass and plays the user. */
class FakeUserNotifications final : public platform::UserNotifications
{
public:
    explicit FakeUserNotifications(platform::Scheduler &scheduler)
        : m_scheduler(scheduler)
    {
    }

    void setDelegate(std::weak_ptr<platform::NotificationDelegate> delegate) override
    {
        m_delegate = std::move(delegate);
    }
    void setCategories(const QList<platform::NotificationCategory> &set) override
    {
        categories = set;
    }
    void authorization(std::function<void(platform::NotificationAuthorization)> done) override;
    void requestAuthorization(
        std::function<void(bool, const std::optional<platform::PlatformError> &)> done) override;
    void add(const platform::NotificationRequest &request,
        std::function<void(const std::optional<platform::PlatformError> &)> done) override;
    void removePending(const QStringList &identifiers) override;
    void removeDelivered(const QStringList &identifiers) override;
    void whenNotNeeded(std::function<void()> done) override { notNeeded = std::move(done); }

    [[nodiscard]] std::shared_ptr<platform::NotificationDelegate> delegate() const
    {
        return m_delegate.lock();
    }

    platform::NotificationAuthorization state = platform::NotificationAuthorization::Authorized;
    /** What the user answers when asked, and the error that asking ends in. */
    bool grants = true;
    std::optional<platform::PlatformError> authorizationError;
    int authorizationRequests = 0;
    std::optional<platform::PlatformError> addError;

    QList<platform::NotificationCategory> categories;
    QList<platform::NotificationRequest> pending;
    QList<platform::NotificationRequest> delivered;
    /** Everything that was added and removed, in order. */
    QStringList calls;
    std::function<void()> notNeeded;

private:
    void answer(std::function<void()> job)
    {
        m_scheduler.runInBackground(platform::Priority::Utility, std::move(job));
    }

    platform::Scheduler &m_scheduler;
    std::weak_ptr<platform::NotificationDelegate> m_delegate;
};

} // namespace zorvane::tests
