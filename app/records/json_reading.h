#pragma once

#include "app/records/text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <QByteArray>
#include <QList>
#include <QString>
#include <QUuid>
#include <simdjson.h>
#include <stdexcept>

/**
 * @file
 * Reading of single JSON values, as strict about types and presence as the platform's own coder: a
 * wrong type is an error, never "absent". The readers throw Error, which ends at the function
 * that decodes a whole document and goes no further.
 */
namespace zorvane::records::json
{

/** A document that is not what it should be. */
class Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

using Element = simdjson::dom::element;
using Object = simdjson::dom::object;
using Array = simdjson::dom::array;

[[nodiscard]] Object asObject(Element element);
[[nodiscard]] Array asArray(Element element);
[[nodiscard]] QString asText(Element element);
/** An integer of 64 bits, also where it is written with a fraction or exponent ("5.0", "50E-1"). */
[[nodiscard]] qint64 asInteger(Element element);
[[nodiscard]] double asNumber(Element element);
/** Bytes written as standard base64. */
[[nodiscard]] QByteArray asData(Element element);
/** The canonical form of 36 characters, in either letter case. */
[[nodiscard]] QUuid asUuid(Element element);

/** The first value under @p key; nothing where it is missing or null. */
[[nodiscard]] std::optional<Element> find(Object object, std::string_view key);

/** The value under a required key. */
template <typename Read>
auto required(Object object, std::string_view key, Read read)
{
    const auto element = find(object, key);
    if (!element)
        throw Error("missing key " + std::string(key));
    return read(*element);
}

/** The value under an optional key. */
template <typename Read>
auto optional(Object object, std::string_view key, Read read)
    -> std::optional<decltype(read(std::declval<Element>()))>
{
    const auto element = find(object, key);
    if (!element)
        return std::nullopt;
    return read(*element);
}

/**
 * Reads an object in one pass, for records that come by the thousands: calls @p read with the
 * position in @p keys of each key that is there, and its first value unless that is null. Returns
 * the positions that were read, as bits.
 */
template <size_t count, typename Read>
unsigned readFields(Object object, const std::array<std::string_view, count> &keys, Read read)
{
    static_assert(count <= std::numeric_limits<unsigned>::digits);
    unsigned seen = 0;
    unsigned present = 0;
    for (const auto field : object) {
        const auto position
            = static_cast<size_t>(std::ranges::find(keys, field.key) - keys.begin());
        const unsigned bit = position < count ? 1U << position : 0U;
        if (bit == 0 || (seen & bit) != 0)
            continue;
        seen |= bit;
        if (field.value.is_null())
            continue;
        present |= bit;
        read(position, field.value);
    }
    return present;
}

/** Every element of an array. */
template <typename Read>
auto listOf(Element element, Read read) -> QList<decltype(read(element))>
{
    const Array array = asArray(element);
    QList<decltype(read(element))> result;
    result.reserve(static_cast<qsizetype>(array.size()));
    for (const Element item : array)
        result.append(read(item));
    return result;
}

/**
 * Parses @p text (UTF-8, a byte order mark is skipped) and hands its root to @p read. Nothing if
 * the text is no JSON or @p read throws Error.
 */
template <typename Read>
auto decode(QByteArrayView text, Read read)
    -> std::optional<decltype(read(std::declval<Element>()))>
{
    if (text.startsWith("\xEF\xBB\xBF"))
        text = text.sliced(3);
    if (text.isEmpty())
        return std::nullopt;
    simdjson::dom::parser parser;
    Element root;
    if (parser.parse(text.data(), static_cast<size_t>(text.size())).get(root) != simdjson::SUCCESS)
        return std::nullopt;
    try {
        return read(root);
    } catch (const Error &) {
        return std::nullopt;
    }
}

} // namespace zorvane::records::json
