#include "app/records/blocked_application_json.h"

#include "app/records/json_reading.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace zorvane::records
{

namespace
{

CodeIdentity readCodeIdentity(json::Element element)
{
    const json::Object object = json::asObject(element);
    CodeIdentity identity;
    identity.signingIdentifier = json::required(object, "signingIdentifier", json::asText);
    identity.teamIdentifier = json::optional(object, "teamIdentifier", json::asText);
    return identity;
}

BlockedApplication readApplication(json::Element element)
{
    const json::Object object = json::asObject(element);
    const auto identities = [](json::Element list) { return json::listOf(list, readCodeIdentity); };
    const auto texts
        = [](json::Element list) { return QStringList(json::listOf(list, json::asText)); };
    BlockedApplication application;
    application.id = json::required(object, "id", json::asUuid);
    application.name = json::required(object, "name", json::asText);
    application.bundleIdentifier = json::required(object, "bundleIdentifier", json::asText);
    application.signingIdentifier = json::required(object, "signingIdentifier", json::asText);
    application.teamIdentifier = json::optional(object, "teamIdentifier", json::asText);
    application.auxiliaryCodeIdentities
        = json::optional(object, "auxiliaryCodeIdentities", identities);
    application.auxiliarySigningIdentifiers
        = json::optional(object, "auxiliarySigningIdentifiers", texts);
    application.inspectionVersion = json::optional(object, "inspectionVersion", json::asInteger);
    application.path = json::required(object, "path", json::asText);
    application.iconData = json::optional(object, "iconData", json::asData);
    return application;
}

} // namespace

QJsonObject toJson(const CodeIdentity &identity)
{
    QJsonObject object{{u"signingIdentifier"_s, wellFormed(identity.signingIdentifier)}};
    if (identity.teamIdentifier)
        object.insert(u"teamIdentifier"_s, wellFormed(*identity.teamIdentifier));
    return object;
}

QJsonObject toJson(const BlockedApplication &application)
{
    QJsonObject object{
        {u"id"_s, application.id.toString(QUuid::WithoutBraces).toUpper()},
        {u"name"_s, wellFormed(application.name)},
        {u"bundleIdentifier"_s, wellFormed(application.bundleIdentifier)},
        {u"signingIdentifier"_s, wellFormed(application.signingIdentifier)},
        {u"path"_s, wellFormed(application.path)},
    };
    if (application.teamIdentifier)
        object.insert(u"teamIdentifier"_s, wellFormed(*application.teamIdentifier));
    if (application.auxiliaryCodeIdentities) {
        QJsonArray identities;
        for (const CodeIdentity &identity : *application.auxiliaryCodeIdentities)
            identities.append(toJson(identity));
        object.insert(u"auxiliaryCodeIdentities"_s, identities);
    }
    if (application.auxiliarySigningIdentifiers) {
        QJsonArray identifiers;
        for (const QString &identifier : *application.auxiliarySigningIdentifiers)
            identifiers.append(wellFormed(identifier));
        object.insert(u"auxiliarySigningIdentifiers"_s, identifiers);
    }
    if (application.inspectionVersion)
        object.insert(u"inspectionVersion"_s, *application.inspectionVersion);
    if (application.iconData)
        object.insert(u"iconData"_s, QString::fromLatin1(application.iconData->toBase64()));
    return object;
}

QByteArray encodedApplications(const QList<BlockedApplication> &applications)
{
    QJsonArray array;
    for (const BlockedApplication &application : applications)
        array.append(toJson(application));
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<BlockedApplication>> decodedApplications(QByteArrayView text)
{
    return json::decode(
        text, [](json::Element root) { return json::listOf(root, readApplication); });
}

} // namespace zorvane::records
