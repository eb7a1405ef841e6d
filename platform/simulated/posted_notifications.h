#pragma once

#include "platform/simulated/notification_service.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <QString>
#include <QVariantMap>

namespace zorvane::platform::simulated
{

/** What is remembered of a notification while it is on the screen. */
struct PostedNotification {
    /** Of the request that it was made of. */
    QString identifier;
    /** The service's number for it, and which service that is. */
    uint number = 0;
    NotificationServiceIdentity by;
    /** The name on the bus of the program that posted it. */
    QString poster;
    QString categoryIdentifier;
    QVariantMap userInfo;

    friend bool operator==(const PostedNotification &, const PostedNotification &) = default;
};

/**
 * The posted notifications in "notifications.json", shared by the product's programs: an object of
 * identifiers, each with {"number", "bus", "service", "poster", "category", "userInfo"}. A damaged
 * file is reported and counts as empty. Blocks on the disk.
 */
class PostedNotifications
{
public:
    explicit PostedNotifications(std::filesystem::path file);

    [[nodiscard]] std::optional<PostedNotification> byIdentifier(const QString &identifier) const;
    [[nodiscard]] std::optional<PostedNotification> byNumber(
        uint number, const NotificationServiceIdentity &by) const;

    /** Remembers a notification in the place of another of its identifier. */
    void keep(const PostedNotification &notification);
    /** Forgets a notification if it is still remembered just so. True for one caller only, however
     * many programs try. */
    bool take(const PostedNotification &notification);

private:
    const std::filesystem::path m_file;
};

} // namespace zorvane::platform::simulated
