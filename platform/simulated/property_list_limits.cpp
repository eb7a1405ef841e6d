#include "platform/simulated/property_list_limits.h"

#include "platform/simulated/property_list.h"

#include <optional>
#include <QDateTime>
#include <QXmlStreamReader>

namespace zorvane::platform::simulated
{

namespace
{

constexpr qsizetype headerSize = 8;
constexpr qsizetype trailerSize = 32;

/** One object of a binary property list: its kind, and where its contents stand. */
struct Object {
    enum class Kind { Plain, Array, Dictionary };
    Kind kind = Kind::Plain;
    quint64 start = 0;
    /** Bytes of a plain object; members of the others. */
    quint64 count = 0;
};

/** Walks a binary property list as libplist will, every use of a shared object anew. */
class BinaryWalk
{
public:
    explicit BinaryWalk(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    bool accepts()
    {
        if (m_bytes.size() < headerSize + trailerSize)
            return false;
        const auto trailer = quint64(m_bytes.size() - trailerSize);
        m_offsetSize = byteAt(trailer + 6);
        m_referenceSize = byteAt(trailer + 7);
        m_objects = bigEndian(trailer + 8, 8);
        m_table = bigEndian(trailer + 24, 8);
        if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8)
            return false;
        if (m_table < quint64(headerSize) || m_table > trailer
            || m_objects > (trailer - m_table) / m_offsetSize)
            return false;
        return visit(bigEndian(trailer + 16, 8), 0);
    }

private:
    [[nodiscard]] quint64 byteAt(quint64 position) const
    {
        return uchar(m_bytes[qsizetype(position)]);
    }

    [[nodiscard]] quint64 bigEndian(quint64 position, quint64 size) const
    {
        quint64 value = 0;
        for (quint64 i = 0; i < size; ++i)
            value = (value << 8) | byteAt(position + i);
        return value;
    }

    /** True if @p count items of @p size bytes from @p start on lie before the offset table. */
    [[nodiscard]] bool fits(quint64 start, quint64 count, quint64 size) const
    {
        return start <= m_table && count <= (m_table - start) / size;
    }

    [[nodiscard]] std::optional<Object> objectAt(quint64 index) const
    {
        if (index >= m_objects)
            return std::nullopt;
        const quint64 position = bigEndian(m_table + index * m_offsetSize, m_offsetSize);
        if (position < quint64(headerSize) || position >= m_table)
            return std::nullopt;
        const quint64 marker = byteAt(position);
        const quint64 low = marker & 0x0F;
        switch (marker >> 4) {
        case 0x0:
            return Object{Object::Kind::Plain, position + 1, 0};
        case 0x1:
        case 0x2:
        case 0x3:
            return low <= 4 ? plain(position + 1, quint64(1) << low) : std::nullopt;
        case 0x8:
            return plain(position + 1, low + 1);
        default:
            return counted(marker >> 4, position);
        }
    }

    [[nodiscard]] std::optional<Object> plain(quint64 start, quint64 size) const
    {
        if (!fits(start, size, 1))
            return std::nullopt;
        return Object{Object::Kind::Plain, start, size};
    }

    /** True if a text of @p count UTF-16 units has a zero one; libplist ends the program over a key
     * that does. */
    [[nodiscard]] bool hasZeroUnit(quint64 start, quint64 count) const
    {
        for (quint64 i = 0; i < count; ++i) {
            if (bigEndian(start + 2 * i, 2) == 0)
                return true;
        }
        return false;
    }

    /** An object whose marker carries a count, or says that the count follows as an integer. */
    [[nodiscard]] std::optional<Object> counted(quint64 type, quint64 position) const
    {
        quint64 start = position + 1;
        quint64 count = byteAt(position) & 0x0F;
        if (count == 0x0F) {
            const quint64 marker = fits(start, 1, 1) ? byteAt(start) : 0;
            const quint64 size = quint64(1) << (marker & 0x0F);
            if (marker >> 4 != 0x1 || size > 8 || !fits(start + 1, size, 1))
                return std::nullopt;
            count = bigEndian(start + 1, size);
            start += 1 + size;
        }
        switch (type) {
        case 0x4:
        case 0x5:
            return plain(start, count);
        case 0x6:
            return fits(start, count, 2) && !hasZeroUnit(start, count) ? plain(start, count * 2)
                                                                       : std::nullopt;
        case 0xA:
        case 0xC:
            if (fits(start, count, m_referenceSize))
                return Object{Object::Kind::Array, start, count};
            return std::nullopt;
        case 0xD:
            if (fits(start, count, 2 * m_referenceSize))
                return Object{Object::Kind::Dictionary, start, count};
            return std::nullopt;
        default:
            return std::nullopt;
        }
    }

    bool visit(quint64 index, int depth)
    {
        const std::optional<Object> object = objectAt(index);
        if (!object || ++m_values > propertyListValueLimit)
            return false;
        if (object->kind == Object::Kind::Plain) {
            m_copied += object->count;
            return m_copied <= quint64(2 * propertyListSizeLimit);
        }
        if (depth == propertyListDepthLimit)
            return false;
        const bool paired = object->kind == Object::Kind::Dictionary;
        const quint64 references = object->count * (paired ? 2 : 1);
        for (quint64 i = 0; i < references; ++i) {
            const quint64 reference = object->start + i * m_referenceSize;
            if (!visit(bigEndian(reference, m_referenceSize), depth + 1))
                return false;
        }
        return true;
    }

    QByteArrayView m_bytes;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_objects = 0;
    quint64 m_table = 0;
    quint64 m_copied = 0;
    qsizetype m_values = 0;
};

/** libplist takes the month for an index, so that only a real date may reach it. */
bool isDate(const QString &text)
{
    return text.size() == 20 && text.endsWith(u'Z')
        && QDateTime::fromString(text, Qt::ISODate).isValid();
}

} // namespace

bool isBinaryWithinLimits(QByteArrayView bytes)
{
    return BinaryWalk(bytes).accepts();
}

bool isXmlWithinLimits(const QString &text)
{
    if (text.count(u'&') > propertyListEntityLimit)
        return false;
    QXmlStreamReader xml(text);
    xml.setNamespaceProcessing(false);
    int depth = 0;
    qsizetype values = 0;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            ++depth;
            ++values;
            // Below the root nothing has attributes; the library would look for tags in them.
            if (depth > propertyListDepthLimit || values > propertyListValueLimit
                || (depth > 1 && !xml.attributes().isEmpty()))
                return false;
            if (xml.qualifiedName() == u"date") {
                if (!isDate(xml.readElementText().trimmed()))
                    return false;
                --depth;
            }
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::DTD:
            if (xml.text().contains(u'['))
                return false;
            break;
        case QXmlStreamReader::ProcessingInstruction:
        case QXmlStreamReader::EntityReference:
            return false;
        default:
            break;
        }
    }
    return !xml.hasError();
}

} // namespace zorvane::platform::simulated
