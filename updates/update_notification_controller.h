#pragma once

#include "platform/main_thread.h"
#include "platform/preferences.h"
#include "platform/scheduler.h"
#include "platform/system_actions.h"
#include "platform/user_notifications.h"
#include "updates/app_update.h"

#include <functional>
#include <memory>
#include <optional>
#include <QObject>
#include <variant>

namespace zorvane::updates
{

/**
 * Announces a newer release by a notification, once for each release, and opens the release's page
 * when the user responds. Main thread; always held by a shared pointer, so that answers of the
 * system can ask whether it still lives. Completions are called on the main thread, at once where
 * nothing has to be asked, and not at all once this is gone.
 */
class UpdateNotificationController final
    : public QObject,
      public platform::NotificationDelegate,
      public std::enable_shared_from_this<UpdateNotificationController>
{
    Q_OBJECT

public:
    /** The services that the controller works with; all outlive it. */
    struct Services {
        platform::Scheduler &scheduler;
        platform::Preferences &preferences;
        platform::UserNotifications &center;
        platform::SystemActions &actions;
    };

    /** Whether notifications are allowed, or why that could not be found out. */
    using AuthorizationResult = std::variant<bool, platform::PlatformError>;

    explicit UpdateNotificationController(const Services &services);
    ~UpdateNotificationController() override;

    /** Makes this the one who hears of responses, and tells the system what can be done with a
     * notification. */
    void registerCategories();

    /** Finds out whether notifications are allowed; asks the user if that is open. */
    void ensureAuthorization(const std::function<void(const AuthorizationResult &result)> &done);

    /**
     * Announces @p update unless it has been announced; without one, takes the announcement back.
     * Nothing is kept of a failure, so that the next call tries again.
     */
    void notifyUpdateAvailability(const std::optional<AppUpdate> &update,
        std::function<void(const std::optional<platform::PlatformError> &error)> done);

    void didReceive(
        const platform::NotificationResponse &response, std::function<void()> done) override;

private:
    using Completion = std::function<void(const std::optional<platform::PlatformError> &error)>;

    void authorized(const AuthorizationResult &result, const AppUpdate &update, Completion done);
    void post(const AppUpdate &update, Completion done);
    void respond(const platform::NotificationResponse &response);
    /** A function for any thread that calls @p answer on the main thread, if this lives then. */
    template <typename Answer>
    [[nodiscard]] auto answeredHere(Answer answer)
    {
        return platform::onMainThread(m_services.scheduler, weak_from_this(), std::move(answer));
    }

    Services m_services;
};

} // namespace zorvane::updates
