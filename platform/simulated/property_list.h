#pragma once

#include <optional>
#include <QByteArray>
#include <QVariant>

namespace zorvane::platform::simulated
{

/** The longest property list that is read, in bytes. */
inline constexpr qsizetype propertyListSizeLimit = qsizetype{64} * 1024 * 1024;

/**
 * Reads a property list: XML, binary ("bplist00"), or the old text form, of which a strings table
 * is a kind. Text may be UTF-8 or UTF-16, with or without a byte order mark; XML that says so may
 * be Latin-1. The input may be hostile: what is too long, nests too deeply or grows too much when
 * its shared parts are copied is refused. Pure; any thread.
 *
 * A text is a QString; otherwise the value is a QByteArray, bool, qlonglong (the low 64 bits of a
 * whole number), double, QDateTime in UTC, QVariantList or QVariantMap. Invalid if the bytes are no
 * property list.
 */
[[nodiscard]] QVariant readPropertyList(QByteArrayView bytes);

/** The text that @p value of a property list is; nothing if it is of another type. */
[[nodiscard]] std::optional<QString> textOf(const QVariant &value);

/**
 * @p dictionary as a binary property list. Takes the types that readPropertyList() gives; values of
 * any other type are left out, dates are kept within 68 years of 2001. Pure; any thread.
 */
[[nodiscard]] QByteArray writePropertyList(const QVariantMap &dictionary);

} // namespace zorvane::platform::simulated
