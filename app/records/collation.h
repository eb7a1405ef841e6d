#pragma once

#include <QCollator>
#include <QLocale>
#include <QString>

/**
 * @file
 * Comparisons as a person expects them: by the rules of a locale, letter case ignored.
 */
namespace zorvane::records
{

/**
 * A locale-aware, case-insensitive order of names; accents count, digits are not read as numbers.
 * One object serves one thread.
 */
class NameOrder
{
public:
    /** The "C" locale, which has no order of its own, sorts as English does. */
    explicit NameOrder(const QLocale &locale = QLocale());

    /** True if @p a goes strictly before @p b. */
    [[nodiscard]] bool operator()(const QString &a, const QString &b) const;

private:
    QCollator m_collator;
};

/**
 * True if @p text contains @p part, letter case ignored by the rules of @p locale. An empty part is
 * in no text.
 */
[[nodiscard]] bool containsIgnoringCase(
    const QString &text, const QString &part, const QLocale &locale = QLocale());

} // namespace zorvane::records
