#include "updates/app_update.h"

#include "app/records/json_reading.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace zorvane::updates
{

namespace
{

namespace json = records::json;

QString asAddress(json::Element element)
{
    QString text = json::asText(element);
    if (!QUrl(text, QUrl::TolerantMode).isValid())
        throw json::Error("URL wanted");
    return text;
}

AppUpdate readUpdate(json::Element element)
{
    const json::Object object = json::asObject(element);
    AppUpdate update;
    update.version = json::required(object, "version", json::asText);
    update.build = json::optional(object, "build", json::asInteger);
    update.downloadURL = json::required(object, "downloadURL", asAddress);
    update.releaseNotes = json::optional(object, "releaseNotes", json::asText);
    return update;
}

} // namespace

QString AppUpdate::announcement() const
{
    return releaseNotes.value_or(u"A new version is ready to download."_s);
}

QByteArray encodedUpdate(const AppUpdate &update)
{
    QJsonObject object{
        {u"version"_s, records::wellFormed(update.version)},
        {u"downloadURL"_s, records::wellFormed(update.downloadURL)},
    };
    if (update.build)
        object.insert(u"build"_s, *update.build);
    if (update.releaseNotes)
        object.insert(u"releaseNotes"_s, records::wellFormed(*update.releaseNotes));
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<AppUpdate> decodedUpdate(QByteArrayView text)
{
    return json::decode(text, readUpdate);
}

} // namespace zorvane::updates
