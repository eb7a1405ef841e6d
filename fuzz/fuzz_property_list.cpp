#include "fuzz/target.h"
#include "platform/simulated/old_style_property_list.h"
#include "platform/simulated/property_list.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <QDateTime>

using namespace zorvane::platform::simulated;
using zorvane::fuzz::require;

namespace
{

/** A text as the library takes it: it ends at a zero, and has no halves of characters. */
QString written(const QString &text)
{
    return QString::fromUtf8(text.toUtf8().constData());
}

/** What is left of a value when it is written: everything but the values that were not understood,
 * and the ends of texts. */
QVariant written(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString)
        return written(value.toString());
    if (value.typeId() == QMetaType::QVariantList) {
        QVariantList list;
        for (const QVariant &item : value.toList()) {
            if (item.isValid())
                list.append(written(item));
        }
        return list;
    }
    if (value.typeId() == QMetaType::QVariantMap) {
        QVariantMap map;
        for (const auto &[key, item] : value.toMap().asKeyValueRange()) {
            if (item.isValid())
                map.insert(written(key), written(item));
        }
        return map;
    }
    return value;
}

/** The date in milliseconds since 2001, as far from there as can be written at most. Less than a
 * second before that the sign is lost. */
qint64 written(const QDateTime &date)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const QDateTime middle(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
    const qint64 milliseconds
        = qBound(Limits::min() * qint64(1000), middle.msecsTo(date), Limits::max() * qint64(1000));
    return milliseconds > -1000 ? std::abs(milliseconds) : milliseconds;
}

/** True if these are equal; a number that is none equals another. */
bool isSame(const QVariant &one, const QVariant &other)
{
    if (one.typeId() != other.typeId())
        return false;
    switch (one.typeId()) {
    case QMetaType::QVariantList:
        return std::ranges::equal(one.toList(), other.toList(), isSame);
    case QMetaType::QVariantMap: {
        const QVariantMap first = one.toMap();
        const QVariantMap second = other.toMap();
        return first.keys() == second.keys()
            && std::ranges::equal(first.values(), second.values(), isSame);
    }
    case QMetaType::Double:
        return one == other || (std::isnan(one.toDouble()) && std::isnan(other.toDouble()));
    case QMetaType::QDateTime:
        return written(one.toDateTime()) == written(other.toDateTime());
    default:
        return one == other;
    }
}

/** Ends the program if a dictionary that was read is another when it is written and read again. */
void requireRoundTrip(const QVariant &read)
{
    if (read.typeId() == QMetaType::QVariantMap)
        require(isSame(written(read), readPropertyList(writePropertyList(read.toMap()))));
}

} // namespace

/** Feeds property lists of every form to the reader. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    const QVariant read = readPropertyList(bytes);
    const QVariant readAsOldStyle = readOldStylePropertyList(QString::fromUtf8(bytes));
    // To write is no part of reading, and costs the library more.
    constexpr std::size_t longestRoundTrip = 65536;
    if (size > longestRoundTrip)
        return 0;
    requireRoundTrip(read);
    requireRoundTrip(readAsOldStyle);
    return 0;
}
