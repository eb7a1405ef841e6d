#pragma once

#include "platform/simulated/property_list.h"

/** @file Property lists made by hand, sound or not. */
namespace zorvane::tests
{

inline QVariant readXml(const QByteArray &content)
{
    return platform::simulated::readPropertyList(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">"
        + content + "</plist>\n");
}

inline QByteArray bigEndian(quint64 value, int size)
{
    QByteArray bytes;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes.append(char(value >> shift));
    return bytes;
}

/** A binary property list of the given raw objects, the first one the root; references take two
 * bytes. */
inline QByteArray binary(const QByteArrayList &objects)
{
    QByteArray bytes("bplist00");
    QByteArray table;
    for (const QByteArray &object : objects) {
        table.append(bigEndian(quint64(bytes.size()), 4));
        bytes.append(object);
    }
    const auto tableStart = quint64(bytes.size());
    bytes.append(table);
    bytes.append(QByteArray(6, 0) + char(4) + char(2));
    bytes.append(
        bigEndian(quint64(objects.size()), 8) + bigEndian(0, 8) + bigEndian(tableStart, 8));
    return bytes;
}

inline QByteArray arrayOf(std::initializer_list<int> references)
{
    QByteArray object(1, char(0xA0 | references.size()));
    for (const int reference : references)
        object.append(bigEndian(quint64(reference), 2));
    return object;
}

} // namespace zorvane::tests
