#pragma once

#include <optional>
#include <QByteArray>
#include <QString>
#include <QStringView>

/**
 * @file
 * Small rules about text that several rooms share. Pure functions, callable on any thread.
 */
namespace zorvane::records
{

/**
 * @p text without white space and line breaks at both ends, by the platform's character set: the
 * Unicode blanks and separators, U+0085 and the zero-width space U+200B, which QString::trimmed()
 * leaves in place.
 */
[[nodiscard]] QString trimmed(QStringView text);

/** A team identifier as a record holds it: trimmed, and absent rather than empty. */
[[nodiscard]] std::optional<QString> normalizedTeam(const std::optional<QString> &team);

/** True if @p a goes before @p b in plain code-point order (not UTF-16 order, no locale). */
[[nodiscard]] bool precedesByCodePoint(QStringView a, QStringView b);

/**
 * Decodes standard base64 (RFC 4648 section 4): padding is mandatory, nothing but the alphabet is
 * accepted, spare bits are ignored. Nothing for any other text.
 */
[[nodiscard]] std::optional<QByteArray> decodedBase64(QByteArrayView text);

/**
 * @p text with every half of a surrogate pair that stands alone replaced. JSON written with one in
 * it would be read by nobody.
 */
[[nodiscard]] QString wellFormed(const QString &text);

/** @p bytes as text if they are valid UTF-8, else nothing. */
[[nodiscard]] std::optional<QString> decodedUtf8(QByteArrayView bytes);

} // namespace zorvane::records
