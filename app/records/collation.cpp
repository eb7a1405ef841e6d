#include "app/records/collation.h"

namespace zorvane::records
{

NameOrder::NameOrder(const QLocale &locale)
    // By its language: a system's own "C" is not equal to Qt's.
    : m_collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale)
{
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
}

bool NameOrder::operator()(const QString &a, const QString &b) const
{
    return m_collator.compare(a, b) < 0;
}

bool containsIgnoringCase(const QString &text, const QString &part, const QLocale &locale)
{
    return !part.isEmpty() && locale.toLower(text).contains(locale.toLower(part));
}

} // namespace zorvane::records
