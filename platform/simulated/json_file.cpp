#include "platform/simulated/json_file.h"

#include "app/records/json_reading.h"
#include "platform/simulated/files.h"
#include "platform/simulated/report.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace zorvane::platform::simulated
{

namespace
{

namespace json = records::json;
using namespace Qt::StringLiterals;

QString textFrom(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QJsonValue valueFrom(json::Element element);

QJsonObject objectFrom(json::Object object)
{
    QJsonObject result;
    for (const auto &[key, value] : object) {
        const QString name = textFrom(key);
        if (!result.contains(name)) // the first of two equal keys holds
            result.insert(name, valueFrom(value));
    }
    return result;
}

// The parser's depth limit bounds the recursion.
QJsonValue valueFrom(json::Element element)
{
    switch (element.type()) {
    case simdjson::dom::element_type::OBJECT:
        return objectFrom(json::asObject(element));
    case simdjson::dom::element_type::ARRAY: {
        QJsonArray result;
        for (const json::Element item : json::asArray(element))
            result.append(valueFrom(item));
        return result;
    }
    case simdjson::dom::element_type::STRING:
        return json::asText(element);
    case simdjson::dom::element_type::BOOL:
        return element.get_bool().value_unsafe();
    case simdjson::dom::element_type::INT64:
        return qint64{element.get_int64().value_unsafe()};
    case simdjson::dom::element_type::UINT64:
    case simdjson::dom::element_type::DOUBLE:
        return json::asNumber(element);
    case simdjson::dom::element_type::NULL_VALUE:
        break;
    }
    return QJsonValue::Null;
}

std::optional<QJsonObject> decoded(const FileContents &contents, const std::filesystem::path &path)
{
    if (contents.kind == FileContents::Kind::Unreadable) {
        qCWarning(simulatedSystem).noquote()
            << textOf(path) << "cannot be read and counts as absent:" << contents.error;
        return std::nullopt;
    }
    if (contents.kind == FileContents::Kind::Absent)
        return std::nullopt;
    auto object = json::decode(
        contents.bytes, [](json::Element root) { return objectFrom(json::asObject(root)); });
    if (!object)
        qCWarning(simulatedSystem).noquote()
            << textOf(path) << "holds no JSON object and counts as absent";
    return object;
}

} // namespace

std::optional<QJsonObject> readJsonFile(const std::filesystem::path &path)
{
    return decoded(readFile(path), path);
}

std::optional<QString> changeJsonFile(
    const std::filesystem::path &path, const std::function<void(QJsonObject &)> &change)
{
    if (auto error = makeFolder(path.parent_path()))
        return error;
    const FileLock lock = FileLock::wait(lockPathOf(path));
    if (!lock.isHeld())
        return lock.error();
    const FileContents contents = readFile(path);
    if (contents.kind == FileContents::Kind::Unreadable)
        return contents.error;
    const std::optional<QJsonObject> stored = decoded(contents, path);
    if (!stored && contents.kind == FileContents::Kind::Read) {
        const auto aside = keepAside(path);
        if (!aside)
            return u"the damaged file could not be kept aside"_s;
        qCWarning(simulatedSystem).noquote() << "kept aside as" << textOf(*aside);
    }
    QJsonObject object = stored.value_or(QJsonObject());
    change(object);
    return replaceFile(path, QJsonDocument(object).toJson(QJsonDocument::Indented));
}

} // namespace zorvane::platform::simulated
