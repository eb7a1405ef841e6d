#include "platform/simulated/old_style_property_list.h"

#include "platform/simulated/property_list_limits.h"

#include <optional>

namespace zorvane::platform::simulated
{

namespace
{

bool isBareCharacter(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= u'a' && code <= u'z') || (code >= u'A' && code <= u'Z')
        || (code >= u'0' && code <= u'9') || QStringView(u"_$/:.-").contains(character);
}

int hexDigit(QChar character)
{
    const char16_t code = character.unicode();
    if (code >= u'0' && code <= u'9')
        return code - u'0';
    if (code >= u'a' && code <= u'f')
        return code - u'a' + 10;
    if (code >= u'A' && code <= u'F')
        return code - u'A' + 10;
    return -1;
}

bool isOctalDigit(QChar character)
{
    return character >= u'0' && character <= u'7';
}

/** What stands for the character after a backslash, beyond digits and "U". */
QChar escaped(QChar character)
{
    switch (character.unicode()) {
    case u'a':
        return u'\a';
    case u'b':
        return u'\b';
    case u'f':
        return u'\f';
    case u'n':
        return u'\n';
    case u'r':
        return u'\r';
    case u't':
        return u'\t';
    case u'v':
        return u'\v';
    default:
        return character;
    }
}

/** A parser by descent. Every method leaves nothing behind when the text is wrong. */
class Parser
{
public:
    explicit Parser(QStringView text)
        : m_rest(text)
    {
    }

    QVariant document()
    {
        if (!skipBlanks())
            return {};
        if (m_rest.isEmpty())
            return QVariantMap();
        const QStringView start = m_rest;
        std::optional<QVariant> root = value(0);
        if (root && skipBlanks() && m_rest.isEmpty())
            return *root;
        // Text followed by more can only be the first key of a strings table.
        m_rest = start;
        const std::optional<QVariantMap> table = entries(0);
        if (table && m_rest.isEmpty())
            return *table;
        return {};
    }

private:
    /** Skips white space and comments; false if a comment has no end. */
    bool skipBlanks()
    {
        for (;;) {
            while (!m_rest.isEmpty() && m_rest.front().isSpace())
                m_rest = m_rest.sliced(1);
            if (m_rest.startsWith(u"//")) {
                const qsizetype end = m_rest.indexOf(u'\n');
                m_rest = end < 0 ? QStringView() : m_rest.sliced(end);
            } else if (m_rest.startsWith(u"/*")) {
                const qsizetype end = m_rest.indexOf(u"*/", 2);
                if (end < 0)
                    return false;
                m_rest = m_rest.sliced(end + 2);
            } else {
                return true;
            }
        }
    }

    /** Takes @p character if it comes next, blanks before it aside. */
    bool take(QChar character)
    {
        if (!skipBlanks() || m_rest.isEmpty() || m_rest.front() != character)
            return false;
        m_rest = m_rest.sliced(1);
        return true;
    }

    std::optional<QVariant> value(int depth)
    {
        if (!skipBlanks() || m_rest.isEmpty() || ++m_values > propertyListValueLimit)
            return std::nullopt;
        if (m_rest.front() == u'{')
            return dictionary(depth);
        if (m_rest.front() == u'(')
            return array(depth);
        if (m_rest.front() == u'<')
            return data();
        if (const std::optional<QString> result = text())
            return *result;
        return std::nullopt;
    }

    std::optional<QVariant> dictionary(int depth)
    {
        if (depth == propertyListDepthLimit || !take(u'{'))
            return std::nullopt;
        const std::optional<QVariantMap> map = entries(depth + 1);
        if (!map || !take(u'}'))
            return std::nullopt;
        return *map;
    }

    /** Entries up to a closing brace or the end. The first of equal keys stands. */
    std::optional<QVariantMap> entries(int depth)
    {
        QVariantMap map;
        for (;;) {
            if (!skipBlanks())
                return std::nullopt;
            if (m_rest.isEmpty() || m_rest.front() == u'}')
                return map;
            const std::optional<QString> key = text();
            if (!key)
                return std::nullopt;
            if (++m_values > propertyListValueLimit)
                return std::nullopt;
            const std::optional<QVariant> entry = take(u'=') ? value(depth) : QVariant(*key);
            if (!entry || !take(u';'))
                return std::nullopt;
            if (!map.contains(*key))
                map.insert(*key, *entry);
        }
    }

    std::optional<QVariant> array(int depth)
    {
        if (depth == propertyListDepthLimit || !take(u'('))
            return std::nullopt;
        QVariantList list;
        while (!take(u')')) {
            const std::optional<QVariant> item = value(depth + 1);
            if (!item)
                return std::nullopt;
            list.append(*item);
            if (take(u','))
                continue;
            if (!take(u')'))
                return std::nullopt;
            break;
        }
        return list;
    }

    std::optional<QVariant> data()
    {
        QByteArray bytes;
        int pending = -1;
        for (qsizetype i = 1; i < m_rest.size(); ++i) {
            const QChar character = m_rest[i];
            if (character == u'>') {
                m_rest = m_rest.sliced(i + 1);
                return pending < 0 ? std::optional<QVariant>(bytes) : std::nullopt;
            }
            if (character.isSpace())
                continue;
            const int digit = hexDigit(character);
            if (digit < 0)
                return std::nullopt;
            if (pending >= 0)
                bytes.append(char(pending * 16 + digit));
            pending = pending < 0 ? digit : -1;
        }
        return std::nullopt;
    }

    std::optional<QString> text()
    {
        if (m_rest.front() == u'"' || m_rest.front() == u'\'')
            return quotedText();
        qsizetype length = 0;
        while (length < m_rest.size() && isBareCharacter(m_rest[length]))
            ++length;
        if (length == 0)
            return std::nullopt;
        const QString result = m_rest.first(length).toString();
        m_rest = m_rest.sliced(length);
        return result;
    }

    std::optional<QString> quotedText()
    {
        const QChar quote = m_rest.front();
        m_rest = m_rest.sliced(1);
        QString result;
        while (!m_rest.isEmpty()) {
            const QChar character = m_rest.front();
            m_rest = m_rest.sliced(1);
            if (character == quote)
                return result;
            if (character != u'\\')
                result.append(character);
            else if (m_rest.isEmpty())
                break;
            else
                result.append(escapedCharacter());
        }
        return std::nullopt;
    }

    /** The character that is named after a backslash: \U and up to four hexadecimal digits, up to
     * three octal digits, a letter, or itself. */
    QChar escapedCharacter()
    {
        if (isOctalDigit(m_rest.front()))
            return number(3, 8);
        if (m_rest.front() == u'U') {
            m_rest = m_rest.sliced(1);
            return number(4, 16);
        }
        const QChar result = escaped(m_rest.front());
        m_rest = m_rest.sliced(1);
        return result;
    }

    QChar number(int digits, int base)
    {
        int code = 0;
        for (; digits > 0 && !m_rest.isEmpty(); --digits) {
            const int digit = hexDigit(m_rest.front());
            if (digit < 0 || digit >= base)
                break;
            code = code * base + digit;
            m_rest = m_rest.sliced(1);
        }
        return {char16_t(code)};
    }

    QStringView m_rest;
    qsizetype m_values = 0;
};

} // namespace

QVariant readOldStylePropertyList(QStringView text)
{
    return Parser(text).document();
}

} // namespace zorvane::platform::simulated
