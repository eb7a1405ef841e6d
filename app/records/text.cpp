#include "app/records/text.h"

#include <algorithm>
#include <QStringDecoder>

namespace zorvane::records
{

namespace
{

bool isBlank(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= 0x0009 && code <= 0x000D) || code == 0x0020 || code == 0x0085 || code == 0x00A0
        || code == 0x1680 || (code >= 0x2000 && code <= 0x200B) || code == 0x2028 || code == 0x2029
        || code == 0x202F || code == 0x205F || code == 0x3000;
}

} // namespace

QString trimmed(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text.toString();
}

std::optional<QString> normalizedTeam(const std::optional<QString> &team)
{
    if (!team)
        return std::nullopt;
    QString text = trimmed(*team);
    if (text.isEmpty())
        return std::nullopt;
    return text;
}

bool precedesByCodePoint(QStringView a, QStringView b)
{
    const auto [left, right] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (right == b.end())
        return false;
    if (left == a.end())
        return true;
    // A surrogate stands for a code point beyond every single unit, though its own value is lower
    // than that of the units from U+E000 on.
    if (left->isSurrogate() != right->isSurrogate())
        return right->isSurrogate();
    return *left < *right;
}

std::optional<QByteArray> decodedBase64(QByteArrayView text)
{
    // Qt's strict mode still takes text without padding, so the length is checked here.
    if (text.size() % 4 != 0)
        return std::nullopt;
    auto result = QByteArray::fromBase64Encoding(
        QByteArray::fromRawData(text.data(), text.size()), QByteArray::AbortOnBase64DecodingErrors);
    if (!result)
        return std::nullopt;
    return std::move(*result);
}

QString wellFormed(const QString &text)
{
    return text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8());
}

std::optional<QString> decodedUtf8(QByteArrayView bytes)
{
    QStringDecoder decode(QStringDecoder::Utf8,
        QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString text = decode(bytes);
    if (decode.hasError())
        return std::nullopt;
    return text;
}

} // namespace zorvane::records
