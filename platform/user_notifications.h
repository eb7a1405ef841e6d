#pragma once

#include "platform/platform_error.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace zorvane::platform
{

/** Whether the user lets the program notify. The system may add values. */
enum class NotificationAuthorization { NotDetermined, Denied, Authorized, Provisional, Ephemeral };

/** A button of a notification. */
struct NotificationAction {
    QString identifier;
    QString title;
    /** The program comes to the front when it is chosen. */
    bool foreground = false;

    friend bool operator==(const NotificationAction &, const NotificationAction &) = default;
};

/** A kind of notification, and what can be done with it. */
struct NotificationCategory {
    QString identifier;
    QList<NotificationAction> actions;

    friend bool operator==(const NotificationCategory &, const NotificationCategory &) = default;
};

/** A notification that is to be shown once, after a delay. */
struct NotificationRequest {
    /** There is at most one pending and one delivered notification of an identifier. */
    QString identifier;
    QString title;
    QString body;
    /** With the system's usual sound; silent otherwise. */
    bool hasDefaultSound = false;
    QString categoryIdentifier;
    /** Comes back with the response. Property-list values. */
    QVariantMap userInfo;
    std::chrono::seconds delay{0};

    friend bool operator==(const NotificationRequest &, const NotificationRequest &) = default;
};

/** What the user did with a notification. */
struct NotificationResponse {
    /** Of the chosen action; empty for a click on the notification itself. */
    QString actionIdentifier;
    QString categoryIdentifier;
    QVariantMap userInfo;
};

/** Hears of responses. */
class NotificationDelegate
{
public:
    virtual ~NotificationDelegate() = default;

    /** Called on any thread. @p done is called exactly once, on any thread, when the response has
     * been dealt with. */
    virtual void didReceive(const NotificationResponse &response, std::function<void()> done) = 0;
};

/**
 * The desktop's notifications to the user, of this product as a whole: its programs share what is
 * on the screen. Called on the main thread; completions are called exactly once, on any thread,
 * never before the call that they answer has returned, and not at all once the port is gone.
 */
class UserNotifications
{
public:
    virtual ~UserNotifications() = default;

    /** Who hears of responses from now on; held weakly. */
    virtual void setDelegate(std::weak_ptr<NotificationDelegate> delegate) = 0;
    /** Replaces the set of categories. */
    virtual void setCategories(const QList<NotificationCategory> &categories) = 0;

    virtual void authorization(std::function<void(NotificationAuthorization)> done) = 0;
    /** Asks the user to let the program show alerts and play sounds. */
    virtual void requestAuthorization(
        std::function<void(bool granted, const std::optional<PlatformError> &error)> done)
        = 0;

    /** Hands a request to the system, in the place of a pending one of its identifier. The
     * completion tells whether it was accepted, not whether it has been shown. */
    virtual void add(const NotificationRequest &request,
        std::function<void(const std::optional<PlatformError> &error)> done)
        = 0;
    virtual void removePending(const QStringList &identifiers) = 0;
    virtual void removeDelivered(const QStringList &identifiers) = 0;

    /**
     * Tells when this process may end without a notification of its own being left that only it can
     * show or answer. At once where the system shows them by itself and starts a program for a
     * response.
     */
    virtual void whenNotNeeded(std::function<void()> done) = 0;
};

} // namespace zorvane::platform
