#include "updates/version_comparison.h"

#include <algorithm>
#include <compare>
#include <QList>
#include <span>

namespace zorvane::updates
{

namespace
{

using Characters = std::span<const uint>;

bool isDigit(uint character)
{
    return character >= u'0' && character <= u'9';
}

/** Takes the digits in front off @p text and returns them without leading zeros. */
Characters takeNumber(Characters &text)
{
    const auto end = std::ranges::find_if_not(text, isDigit);
    const auto first = std::find_if(text.begin(), end, [](uint digit) { return digit != u'0'; });
    const Characters number(first, end);
    text = Characters(end, text.end());
    return number;
}

int order(std::strong_ordering ordering)
{
    if (std::is_lt(ordering))
        return -1;
    return std::is_gt(ordering) ? 1 : 0;
}

int compareNumbers(Characters a, Characters b)
{
    if (a.size() != b.size())
        return order(a.size() <=> b.size());
    const auto [left, right] = std::mismatch(a.begin(), a.end(), b.begin());
    return left == a.end() ? 0 : order(*left <=> *right);
}

} // namespace

int compareNumerically(const QString &a, const QString &b)
{
    const auto left = a.normalized(QString::NormalizationForm_C).toUcs4();
    const auto right = b.normalized(QString::NormalizationForm_C).toUcs4();
    Characters x(left.begin(), left.end());
    Characters y(right.begin(), right.end());
    while (!x.empty() && !y.empty()) {
        int result = order(x.front() <=> y.front());
        if (isDigit(x.front()) && isDigit(y.front())) {
            result = compareNumbers(takeNumber(x), takeNumber(y));
        } else {
            x = x.subspan(1);
            y = y.subspan(1);
        }
        if (result != 0)
            return result;
    }
    return order(x.size() <=> y.size());
}

qint64 buildNumber(const QString &text)
{
    const bool hasSign = text.startsWith(u'+') || text.startsWith(u'-');
    const QStringView digits = QStringView(text).sliced(hasSign ? 1 : 0);
    // Checked here because Qt also takes blanks around a number.
    if (!std::ranges::all_of(digits, [](QChar each) { return isDigit(each.unicode()); }))
        return 0;
    return text.toLongLong();
}

} // namespace zorvane::updates
