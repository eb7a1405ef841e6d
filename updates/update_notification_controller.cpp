#include "updates/update_notification_controller.h"

#include "updates/download_address.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace zorvane::updates
{

using platform::NotificationAuthorization;
using platform::PlatformError;

namespace
{

const QString updateCategoryIdentifier = u"ZORVANE_UPDATE"_s;
/** There is never more than one notification of an update. */
const QString updateIdentifier = u"zorvane-update-available"_s;
const QString lastUpdateVersionKey = u"updates.lastNotifiedVersion"_s;
const QString downloadURLKey = u"downloadURL"_s;

/** What a release is remembered by once it has been announced. */
QString releaseToken(const AppUpdate &update)
{
    return update.version + u'-' + QString::number(update.build.value_or(0));
}

platform::NotificationRequest notificationOf(const AppUpdate &update)
{
    return {
        .identifier = updateIdentifier,
        .title = u"Zorvane %1 is available"_s.arg(update.version),
        .body = update.announcement(),
        .hasDefaultSound = true,
        .categoryIdentifier = updateCategoryIdentifier,
        .userInfo = {{downloadURLKey, update.downloadURL}},
        .delay = 5s,
    };
}

/** The address that a notification carries; empty if it is no text. */
QString addressIn(const QVariantMap &userInfo)
{
    const QVariant value = userInfo.value(downloadURLKey);
    return value.metaType() == QMetaType::fromType<QString>() ? value.toString() : QString();
}

} // namespace

UpdateNotificationController::UpdateNotificationController(const Services &services)
    : m_services(services)
{
}

UpdateNotificationController::~UpdateNotificationController() = default;

void UpdateNotificationController::registerCategories()
{
    m_services.center.setDelegate(weak_from_this());
    m_services.center.setCategories({{
        .identifier = updateCategoryIdentifier,
        .actions = {{
            .identifier = u"DOWNLOAD_UPDATE"_s,
            .title = u"Download Update"_s,
            .foreground = true,
        }},
    }});
}

void UpdateNotificationController::ensureAuthorization(
    const std::function<void(const AuthorizationResult &)> &done)
{
    const auto requested
        = answeredHere([done](bool granted, const std::optional<PlatformError> &error) {
              done(error ? AuthorizationResult(*error) : AuthorizationResult(granted));
          });
    m_services.center.authorization(
        answeredHere([this, done, requested](NotificationAuthorization state) {
            switch (state) {
            case NotificationAuthorization::Authorized:
            case NotificationAuthorization::Provisional:
                done(true);
                return;
            case NotificationAuthorization::NotDetermined:
                m_services.center.requestAuthorization(requested);
                return;
            case NotificationAuthorization::Denied:
            case NotificationAuthorization::Ephemeral:
                break;
            }
            done(false);
        }));
}

void UpdateNotificationController::notifyUpdateAvailability(
    const std::optional<AppUpdate> &update, Completion done)
{
    if (!update) {
        m_services.center.removePending({updateIdentifier});
        m_services.center.removeDelivered({updateIdentifier});
        done(std::nullopt);
        return;
    }
    if (m_services.preferences.string(lastUpdateVersionKey) == releaseToken(*update)) {
        done(std::nullopt);
        return;
    }
    ensureAuthorization([this, release = *update, done = std::move(done)](
                            const auto &result) { authorized(result, release, done); });
}

void UpdateNotificationController::authorized(
    const AuthorizationResult &result, const AppUpdate &update, Completion done)
{
    if (const auto *const error = std::get_if<PlatformError>(&result))
        done(*error);
    else if (std::get<bool>(result))
        post(update, std::move(done));
    else
        done(std::nullopt);
}

void UpdateNotificationController::post(const AppUpdate &update, Completion done)
{
    m_services.center.removePending({updateIdentifier});
    m_services.center.add(notificationOf(update),
        answeredHere([this, token = releaseToken(update), done = std::move(done)](
                         const std::optional<PlatformError> &error) {
            if (!error)
                m_services.preferences.setString(lastUpdateVersionKey, token);
            done(error);
        }));
}

void UpdateNotificationController::didReceive(
    const platform::NotificationResponse &response, std::function<void()> done)
{
    // Not dropped with this: the system waits for done in every case.
    m_services.scheduler.post([self = weak_from_this(), response, done = std::move(done)] {
        if (const auto controller = self.lock())
            controller->respond(response);
        done();
    });
}

void UpdateNotificationController::respond(const platform::NotificationResponse &response)
{
    m_services.actions.comeToFront();
    if (response.categoryIdentifier != updateCategoryIdentifier)
        return;
    if (const auto address = allowedDownloadAddress(addressIn(response.userInfo)))
        m_services.actions.openUrl(*address);
}

} // namespace zorvane::updates
