#include "inspection/discovered_network_process.h"

#include "app/records/json_reading.h"

#include <algorithm>
#include <functional>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <vector>

using namespace Qt::StringLiterals;

namespace zorvane::inspection
{

namespace json = records::json;

namespace
{

/** The required fields come first. */
enum Field {
    SigningIdentifier,
    FirstSeenAt,
    LastSeenAt,
    ConnectionCount,
    TeamIdentifier,
    SourceApplicationIdentifier,
    SourceApplicationTeamIdentifier,
    ExecutablePath,
};
constexpr unsigned requiredFields = (1U << (ConnectionCount + 1)) - 1;
constexpr std::array<std::string_view, 8> fieldNames{"signingIdentifier", "firstSeenAt",
    "lastSeenAt", "connectionCount", "teamIdentifier", "sourceApplicationIdentifier",
    "sourceApplicationTeamIdentifier", "executablePath"};

DiscoveredNetworkProcess readProcess(json::Element element)
{
    DiscoveredNetworkProcess process;
    const auto read = [&process](size_t field, json::Element value) {
        switch (static_cast<Field>(field)) {
        case SigningIdentifier:
            process.signingIdentifier = json::asText(value);
            break;
        case FirstSeenAt:
            process.firstSeenAt = json::asNumber(value);
            break;
        case LastSeenAt:
            process.lastSeenAt = json::asNumber(value);
            break;
        case ConnectionCount:
            process.connectionCount = json::asInteger(value);
            break;
        case TeamIdentifier:
            process.teamIdentifier = json::asText(value);
            break;
        case SourceApplicationIdentifier:
            process.sourceApplicationIdentifier = json::asText(value);
            break;
        case SourceApplicationTeamIdentifier:
            process.sourceApplicationTeamIdentifier = json::asText(value);
            break;
        case ExecutablePath:
            process.executablePath = json::asText(value);
            break;
        }
    };
    const unsigned present = json::readFields(json::asObject(element), fieldNames, read);
    if ((present & requiredFields) != requiredFields)
        throw json::Error("incomplete process");
    return process;
}

/** Orders what is still small, the documents of the records, and then makes each in its place. */
QList<DiscoveredNetworkProcess> readMostRecentFirst(json::Element root)
{
    struct Dated {
        ReferenceSeconds lastSeenAt;
        json::Element document;
    };
    const json::Array documents = json::asArray(root);
    std::vector<Dated> dated;
    dated.reserve(documents.size());
    for (const json::Element document : documents) {
        const auto time
            = json::required(json::asObject(document), fieldNames.at(LastSeenAt), json::asNumber);
        dated.push_back({time, document});
    }
    std::ranges::stable_sort(dated, std::greater(), &Dated::lastSeenAt);
    QList<DiscoveredNetworkProcess> processes;
    processes.reserve(static_cast<qsizetype>(dated.size()));
    for (const Dated &each : dated)
        processes.append(readProcess(each.document));
    return processes;
}

/** Qt writes large whole numbers without an exponent; beyond 64 bits nobody could read them. */
double writable(ReferenceSeconds time)
{
    return std::clamp(time, -furthestSeconds, furthestSeconds);
}

QJsonObject toJson(const DiscoveredNetworkProcess &process)
{
    QJsonObject object{
        {u"signingIdentifier"_s, process.signingIdentifier},
        {u"firstSeenAt"_s, writable(process.firstSeenAt)},
        {u"lastSeenAt"_s, writable(process.lastSeenAt)},
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

std::optional<QList<DiscoveredNetworkProcess>> decodedMostRecentFirst(QByteArrayView text)
{
    return json::decode(text, readMostRecentFirst);
}

} // namespace zorvane::inspection
