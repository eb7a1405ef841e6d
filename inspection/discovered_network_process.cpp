#include "inspection/discovered_network_process.h"

#include "app/records/json_reading.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace zorvane::inspection
{

namespace json = records::json;

namespace
{

DiscoveredNetworkProcess readProcess(json::Element element)
{
    const json::Object object = json::asObject(element);
    DiscoveredNetworkProcess process;
    process.signingIdentifier = json::required(object, "signingIdentifier", json::asText);
    process.teamIdentifier = json::optional(object, "teamIdentifier", json::asText);
    process.sourceApplicationIdentifier
        = json::optional(object, "sourceApplicationIdentifier", json::asText);
    process.sourceApplicationTeamIdentifier
        = json::optional(object, "sourceApplicationTeamIdentifier", json::asText);
    process.executablePath = json::optional(object, "executablePath", json::asText);
    process.firstSeenAt = json::required(object, "firstSeenAt", json::asNumber);
    process.lastSeenAt = json::required(object, "lastSeenAt", json::asNumber);
    process.connectionCount = json::required(object, "connectionCount", json::asInteger);
    return process;
}

QJsonObject toJson(const DiscoveredNetworkProcess &process)
{
    QJsonObject object{
        {u"signingIdentifier"_s, process.signingIdentifier},
        {u"firstSeenAt"_s, process.firstSeenAt},
        {u"lastSeenAt"_s, process.lastSeenAt},
        {u"connectionCount"_s, process.connectionCount},
    };
    const auto insert = [&object](const QString &key, const std::optional<QString> &value) {
        if (value)
            object.insert(key, *value);
    };
    insert(u"teamIdentifier"_s, process.teamIdentifier);
    insert(u"sourceApplicationIdentifier"_s, process.sourceApplicationIdentifier);
    insert(u"sourceApplicationTeamIdentifier"_s, process.sourceApplicationTeamIdentifier);
    insert(u"executablePath"_s, process.executablePath);
    return object;
}

} // namespace

ReferenceSeconds referenceSeconds(const QDateTime &time)
{
    static const qint64 reference
        = QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    return static_cast<double>(time.toMSecsSinceEpoch() - reference) / 1000.0;
}

records::CodeIdentity ownIdentity(const DiscoveredNetworkProcess &process)
{
    return records::CodeIdentity::make(process.signingIdentifier, process.teamIdentifier);
}

std::optional<records::CodeIdentity> sourceApplicationIdentity(
    const DiscoveredNetworkProcess &process)
{
    if (!process.sourceApplicationIdentifier)
        return std::nullopt;
    return records::CodeIdentity::make(
        *process.sourceApplicationIdentifier, process.sourceApplicationTeamIdentifier);
}

QByteArray encodedProcesses(const QList<DiscoveredNetworkProcess> &processes)
{
    QJsonArray array;
    for (const DiscoveredNetworkProcess &process : processes)
        array.append(toJson(process));
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<DiscoveredNetworkProcess>> decodedProcesses(QByteArrayView text)
{
    return json::decode(text, [](json::Element root) { return json::listOf(root, readProcess); });
}

} // namespace zorvane::inspection
