#include "platform/simulated/posted_notifications.h"

#include "platform/simulated/json_file.h"
#include "platform/simulated/report.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace zorvane::platform::simulated
{

namespace
{

QJsonObject toJson(const PostedNotification &notification)
{
    return {
        {u"number"_s, qint64{notification.number}},
        {u"bus"_s, notification.by.bus},
        {u"service"_s, notification.by.service},
        {u"poster"_s, notification.poster},
        {u"category"_s, notification.categoryIdentifier},
        {u"userInfo"_s, QJsonObject::fromVariantMap(notification.userInfo)},
    };
}

/** What is missing or has a wrong type is left empty, which no notification in use has. */
PostedNotification fromJson(const QString &identifier, const QJsonObject &object)
{
    return {
        .identifier = identifier,
        .number = uint(object.value(u"number"_s).toInteger()),
        .by = {object.value(u"bus"_s).toString(), object.value(u"service"_s).toString()},
        .poster = object.value(u"poster"_s).toString(),
        .categoryIdentifier = object.value(u"category"_s).toString(),
        .userInfo = object.value(u"userInfo"_s).toObject().toVariantMap(),
    };
}

void report(const std::optional<QString> &error)
{
    if (error)
        qCWarning(simulatedSystem).noquote()
            << "What is known of notifications could not be stored:" << *error;
}

} // namespace

PostedNotifications::PostedNotifications(std::filesystem::path file)
    : m_file(std::move(file))
{
}

std::optional<PostedNotification> PostedNotifications::byIdentifier(const QString &identifier) const
{
    const QJsonObject all = readJsonFile(m_file).value_or(QJsonObject());
    const auto found = all.constFind(identifier);
    if (found == all.constEnd())
        return std::nullopt;
    return fromJson(identifier, found->toObject());
}

std::optional<PostedNotification> PostedNotifications::byNumber(
    uint number, const NotificationServiceIdentity &by) const
{
    const QJsonObject all = readJsonFile(m_file).value_or(QJsonObject());
    for (auto each = all.constBegin(); each != all.constEnd(); ++each) {
        PostedNotification notification = fromJson(each.key(), each->toObject());
        if (notification.number == number && notification.by == by)
            return notification;
    }
    return std::nullopt;
}

void PostedNotifications::keep(const PostedNotification &notification)
{
    report(changeJsonFile(m_file,
        [&](QJsonObject &all) { all.insert(notification.identifier, toJson(notification)); }));
}

bool PostedNotifications::take(const PostedNotification &notification)
{
    bool taken = false;
    report(changeJsonFile(m_file, [&](QJsonObject &all) {
        const auto found = all.find(notification.identifier);
        taken = found != all.end()
            && fromJson(notification.identifier, found->toObject()) == notification;
        if (taken)
            all.erase(found);
    }));
    return taken;
}

} // namespace zorvane::platform::simulated
