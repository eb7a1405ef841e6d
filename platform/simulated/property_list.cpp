#include "platform/simulated/property_list.h"

#include "platform/simulated/old_style_property_list.h"
#include "platform/simulated/property_list_limits.h"

#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <plist/plist.h>
#include <QDateTime>
#include <QRegularExpression>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace zorvane::platform::simulated
{

namespace
{

struct NodeDeleter {
    void operator()(void *node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

/** 2001-01-01 00:00 UTC, where the dates of property lists begin, in seconds of Unix time. */
constexpr qint64 referenceDate = 978307200;

QVariant toVariant(plist_t node);

QVariantList toList(plist_t node)
{
    QVariantList list;
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(node, &iterator);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(node, iterator, &item);
        if (item == nullptr)
            break;
        list.append(toVariant(item));
    }
    std::free(iterator);
    return list;
}

QVariantMap toMap(plist_t node)
{
    QVariantMap map;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    for (;;) {
        char *key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, iterator, &key, &value);
        if (key != nullptr && value != nullptr)
            map.insert(QString::fromUtf8(key), toVariant(value));
        std::free(key);
        if (value == nullptr)
            break;
    }
    std::free(iterator);
    return map;
}

QString toText(plist_t node)
{
    uint64_t length = 0;
    const char *text = plist_get_string_ptr(node, &length);
    return QString::fromUtf8(text, qsizetype(length));
}

QByteArray toBytes(plist_t node)
{
    uint64_t length = 0;
    const char *bytes = plist_get_data_ptr(node, &length);
    return {bytes, qsizetype(length)};
}

QDateTime toDate(plist_t node)
{
    int32_t seconds = 0;
    int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    // The library gives the fraction without its sign and rounded down, and none that makes sense
    // of a date that it cannot hold.
    const bool isFraction = microseconds >= 0 && microseconds < 1'000'000;
    const qint64 fraction = isFraction ? (seconds < 0 ? -1 : 1) * ((microseconds + 500) / 1000) : 0;
    const qint64 milliseconds = (qint64(seconds) + referenceDate) * 1000 + fraction;
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
}

QVariant toVariant(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return qlonglong(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING:
        return toText(node);
    case PLIST_DATA:
        return toBytes(node);
    case PLIST_DATE:
        return toDate(node);
    case PLIST_ARRAY:
        return toList(node);
    case PLIST_DICT:
        return toMap(node);
    case PLIST_KEY:
    case PLIST_UID:
    case PLIST_NONE:
        break;
    }
    return {};
}

QVariant readBinary(QByteArrayView bytes)
{
    if (!isBinaryWithinLimits(bytes))
        return {};
    plist_t root = nullptr;
    plist_from_bin(bytes.data(), uint32_t(bytes.size()), &root);
    const Node node(root);
    return node ? toVariant(root) : QVariant();
}

QVariant readXml(const QString &text)
{
    if (!isXmlWithinLimits(text))
        return {};
    // The library takes every text for UTF-8, whatever it says of itself.
    const QByteArray bytes = text.toUtf8();
    plist_t root = nullptr;
    plist_from_xml(bytes.constData(), uint32_t(bytes.size()), &root);
    const Node node(root);
    return node ? toVariant(root) : QVariant();
}

/** The encoding that a byte order mark tells, or else the zero byte of a first ASCII character. */
QStringConverter::Encoding encodingOf(QByteArrayView bytes)
{
    if (const auto marked = QStringConverter::encodingForData(bytes))
        return *marked;
    if (bytes.size() >= 2 && bytes[0] == 0 && bytes[1] != 0)
        return QStringConverter::Utf16BE;
    if (bytes.size() >= 2 && bytes[0] != 0 && bytes[1] == 0)
        return QStringConverter::Utf16LE;
    return QStringConverter::Utf8;
}

/** True if these are the bytes of an XML text that says to be in Latin-1. */
bool isLatin1Xml(QByteArrayView bytes)
{
    static const QRegularExpression declaration(
        u"^\\s*<\\?xml[^>]*\\sencoding\\s*=\\s*[\"'](?:iso-8859-1|latin-?1)[\"']"_s,
        QRegularExpression::CaseInsensitiveOption);
    constexpr qsizetype longestDeclaration = 200;
    const QByteArrayView start = bytes.first(qMin(bytes.size(), longestDeclaration));
    return declaration.match(QString::fromLatin1(start)).hasMatch();
}

/** The text without white space around it. */
std::optional<QString> decodedText(QByteArrayView bytes)
{
    QStringDecoder decode(encodingOf(bytes), QStringConverter::Flag::Stateless);
    const QString text = decode(bytes);
    if (!decode.hasError())
        return text.trimmed();
    if (isLatin1Xml(bytes))
        return QString::fromLatin1(bytes).trimmed();
    return std::nullopt;
}

bool looksLikeXml(const QString &text)
{
    return text.startsWith(u"<?xml") || text.startsWith(u"<!") || text.startsWith(u"<plist");
}

Node toNode(const QVariant &value);

Node toArray(const QVariantList &list)
{
    Node array(plist_new_array());
    for (const QVariant &item : list) {
        if (Node node = toNode(item))
            plist_array_append_item(array.get(), node.release());
    }
    return array;
}

Node toDictionary(const QVariantMap &map)
{
    Node dictionary(plist_new_dict());
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (Node node = toNode(entry.value()))
            plist_dict_set_item(dictionary.get(), entry.key().toUtf8().constData(), node.release());
    }
    return dictionary;
}

Node toDateNode(const QDateTime &date)
{
    using Limits = std::numeric_limits<int32_t>;
    const qint64 milliseconds = date.toMSecsSinceEpoch() - referenceDate * 1000;
    const qint64 seconds = milliseconds / 1000;
    if (seconds <= Limits::min() || seconds >= Limits::max())
        return Node(plist_new_date(seconds < 0 ? Limits::min() : Limits::max(), 0));
    return Node(plist_new_date(int32_t(seconds), int32_t(milliseconds % 1000 * 1000)));
}

Node toNode(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return Node(plist_new_bool(value.toBool() ? 1 : 0));
    case QMetaType::Int:
    case QMetaType::LongLong:
        return Node(plist_new_uint(uint64_t(value.toLongLong())));
    case QMetaType::Double:
        return Node(plist_new_real(value.toDouble()));
    case QMetaType::QString:
        return Node(plist_new_string(value.toString().toUtf8().constData()));
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return Node(plist_new_data(bytes.constData(), uint64_t(bytes.size())));
    }
    case QMetaType::QDateTime:
        return toDateNode(value.toDateTime());
    case QMetaType::QVariantList:
        return toArray(value.toList());
    case QMetaType::QVariantMap:
        return toDictionary(value.toMap());
    default:
        return nullptr;
    }
}

} // namespace

QVariant readPropertyList(QByteArrayView bytes)
{
    if (bytes.size() > propertyListSizeLimit)
        return {};
    if (bytes.startsWith("bplist"))
        return readBinary(bytes);
    const std::optional<QString> text = decodedText(bytes);
    if (!text)
        return {};
    return looksLikeXml(*text) ? readXml(*text) : readOldStylePropertyList(*text);
}

std::optional<QString> textOf(const QVariant &value)
{
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

QByteArray writePropertyList(const QVariantMap &dictionary)
{
    const Node root = toDictionary(dictionary);
    char *bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(root.get(), &bytes, &length);
    QByteArray result(bytes, length);
    plist_to_bin_free(bytes);
    return result;
}

} // namespace zorvane::platform::simulated
