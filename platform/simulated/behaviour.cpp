#include "platform/simulated/behaviour.h"

#include "app/records/json_reading.h"
#include "platform/simulated/report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <QFile>

namespace zorvane::platform::simulated
{

namespace
{

namespace json = records::json;
using namespace Qt::StringLiterals;

constexpr std::array<std::string_view, 9> knownKeys{"bundlePath", "bundleIdentifier",
    "shortVersion", "build", "applicationGroups", "approval", "activationDelay", "rebootNeeded",
    "faults"};

bool asBoolean(json::Element element)
{
    bool value = false;
    if (element.get(value) != simdjson::SUCCESS)
        throw json::Error("true or false wanted");
    return value;
}

std::filesystem::path asAbsolutePath(json::Element element)
{
    const QString path = json::asText(element);
    if (!path.startsWith(u'/') || path.contains(QChar::Null))
        throw json::Error("absolute path wanted");
    return QFile::encodeName(path).toStdString();
}

Approval asApproval(json::Element element)
{
    const QString name = json::asText(element);
    if (name == u"granted"_s)
        return Approval::Granted;
    if (name == u"ask"_s)
        return Approval::Ask;
    if (name == u"denied"_s)
        return Approval::Denied;
    throw json::Error(R"("granted", "ask" or "denied" wanted)");
}

Operation asOperation(json::Element element)
{
    const QString name = json::asText(element);
    if (name == u"load"_s)
        return Operation::Load;
    if (name == u"save"_s)
        return Operation::Save;
    if (name == u"activate"_s)
        return Operation::Activate;
    throw json::Error(R"("load", "save" or "activate" wanted)");
}

std::chrono::milliseconds asDelay(json::Element element)
{
    constexpr double longest = 24 * 60 * 60;
    const double seconds = json::asNumber(element);
    if (!(seconds >= 0 && seconds <= longest))
        throw json::Error("seconds from 0 to 86400 wanted");
    return std::chrono::milliseconds(std::llround(seconds * 1000));
}

QStringList asTexts(json::Element element)
{
    return json::listOf(element, json::asText);
}

Fault asFault(json::Element element)
{
    const json::Object object = json::asObject(element);
    Fault fault;
    fault.operation = json::required(object, "operation", asOperation);
    fault.error.domain
        = json::optional(object, "domain", json::asText)
              .value_or(fault.operation == Operation::Activate ? u"OSSystemExtensionErrorDomain"_s
                                                               : u"NEFilterErrorDomain"_s);
    fault.error.code = json::optional(object, "code", json::asInteger).value_or(1);
    fault.error.description
        = json::optional(object, "description", json::asText)
              .value_or(u"The operation couldn’t be completed. (%1 error %2.)"_s.arg(
                  fault.error.domain, QString::number(fault.error.code)));
    fault.times = json::optional(object, "times", json::asInteger);
    return fault;
}

/** Reads the members of "system.json", each for itself: one bad value spoils no other. */
class Reader
{
public:
    Reader(json::Object object, QString name)
        : m_object(object)
        , m_name(std::move(name))
    {
    }

    void reportUnknownKeys() const
    {
        for (const auto &[key, value] : m_object) {
            if (std::find(knownKeys.begin(), knownKeys.end(), key) == knownKeys.end())
                report(key, "unknown key");
        }
    }

    template <typename Convert, typename Value>
    void read(std::string_view key, Convert convert, Value &value) const
    {
        try {
            if (auto found = json::optional(m_object, key, convert))
                value = std::move(*found);
        } catch (const json::Error &error) {
            report(key, error.what());
        }
    }

    /** As read(), and null makes the value absent. */
    template <typename Convert, typename Value>
    void readOrNull(std::string_view key, Convert convert, std::optional<Value> &value) const
    {
        json::Element element;
        if (m_object.at_key(key).get(element) == simdjson::SUCCESS && element.is_null())
            value.reset();
        else
            read(key, convert, value);
    }

private:
    void report(std::string_view key, const char *reason) const
    {
        qCWarning(simulatedSystem).noquote().nospace()
            << m_name << ": \"" << QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()))
            << "\" counts as absent: " << reason;
    }

    json::Object m_object;
    QString m_name;
};

} // namespace

Behaviour standardBehaviour()
{
    Behaviour behaviour;
    behaviour.bundleIdentifier = u"dev.kestrelworks.Zorvane"_s;
    behaviour.shortVersion = QStringLiteral(ZORVANE_VERSION);
    behaviour.build = u"1"_s;
    behaviour.applicationGroups = {u"group.dev.kestrelworks.Zorvane"_s};
    return behaviour;
}

Behaviour readBehaviour(QByteArrayView text, const QString &name)
{
    const auto behaviour = json::decode(text, [&name](json::Element root) {
        const Reader reader(json::asObject(root), name);
        Behaviour result = standardBehaviour();
        reader.reportUnknownKeys();
        reader.read("bundlePath", asAbsolutePath, result.bundlePath);
        reader.readOrNull("bundleIdentifier", json::asText, result.bundleIdentifier);
        reader.readOrNull("shortVersion", json::asText, result.shortVersion);
        reader.readOrNull("build", json::asText, result.build);
        reader.readOrNull("applicationGroups", asTexts, result.applicationGroups);
        reader.read("approval", asApproval, result.approval);
        reader.read("activationDelay", asDelay, result.activationDelay);
        reader.read("rebootNeeded", asBoolean, result.rebootNeeded);
        reader.read(
            "faults", [](json::Element list) { return json::listOf(list, asFault); },
            result.faults);
        return result;
    });
    if (!behaviour) {
        qCWarning(simulatedSystem).noquote() << name << "holds no JSON object and counts as absent";
        return standardBehaviour();
    }
    return *behaviour;
}

} // namespace zorvane::platform::simulated
