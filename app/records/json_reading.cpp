#include "app/records/json_reading.h"

#include <cmath>

namespace zorvane::records::json
{

namespace
{

template <typename Value>
Value get(Element element, const char *wanted)
{
    Value value;
    if (element.get(value) != simdjson::SUCCESS)
        throw Error(wanted);
    return value;
}

bool isHexDigit(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f')
        || (character >= 'A' && character <= 'F');
}

bool isCanonicalUuid(std::string_view text)
{
    if (text.size() != 36)
        return false;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool hyphenWanted = i == 8 || i == 13 || i == 18 || i == 23;
        const bool valid = hyphenWanted ? text[i] == '-' : isHexDigit(text[i]);
        if (!valid)
            return false;
    }
    return true;
}

} // namespace

Object asObject(Element element)
{
    return get<Object>(element, "object wanted");
}

Array asArray(Element element)
{
    return get<Array>(element, "array wanted");
}

QString asText(Element element)
{
    const auto text = get<std::string_view>(element, "text wanted");
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

qint64 asInteger(Element element)
{
    if (element.is_int64())
        return element.get_int64().value_unsafe();
    if (!element.is_double())
        throw Error("integer wanted");
    const double value = element.get_double().value_unsafe();
    // Both bounds are exact powers of two, so the comparison is exact as well.
    if (std::trunc(value) != value || value < -0x1p63 || value >= 0x1p63)
        throw Error("integer wanted");
    return static_cast<qint64>(value);
}

double asNumber(Element element)
{
    return get<double>(element, "number wanted");
}

QByteArray asData(Element element)
{
    const auto text = get<std::string_view>(element, "text wanted");
    auto data = decodedBase64(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    if (!data)
        throw Error("base64 wanted");
    return std::move(*data);
}

QUuid asUuid(Element element)
{
    const auto text = get<std::string_view>(element, "text wanted");
    if (!isCanonicalUuid(text))
        throw Error("UUID wanted");
    return QUuid::fromString(QLatin1StringView(text.data(), static_cast<qsizetype>(text.size())));
}

std::optional<Element> find(Object object, std::string_view key)
{
    Element element;
    if (object.at_key(key).get(element) != simdjson::SUCCESS || element.is_null())
        return std::nullopt;
    return element;
}

} // namespace zorvane::records::json
