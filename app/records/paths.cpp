#include "app/records/paths.h"

#include <algorithm>
#include <QDir>
#include <QList>

namespace zorvane::records
{

namespace
{

bool isForbiddenInExtension(QChar character)
{
    const char16_t code = character.unicode();
    const bool bidirectionalControl = code == 0x061C || code == 0x200E || code == 0x200F
        || (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return code == u' ' || bidirectionalControl;
}

/** Where the extension's dot stands in @p name, or -1. */
qsizetype extensionDot(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot <= 0 || dot == name.size() - 1)
        return -1;
    const QStringView stem = name.first(dot);
    if (stem == u"." || stem == u"..")
        return -1;
    const QStringView extension = name.sliced(dot + 1);
    return std::ranges::any_of(extension, isForbiddenInExtension) ? -1 : dot;
}

} // namespace

QString standardizedPath(const QString &path)
{
    const QString absolute = path.startsWith(u'/') ? path : QDir::currentPath() + u'/' + path;
    const auto components = QStringView(absolute).sliced(1).split(u'/');
    QList<QStringView> kept;
    for (const QStringView component : components) {
        if (component == u".")
            continue;
        if (component == u".." && !kept.isEmpty() && kept.last() != u"..")
            kept.removeLast();
        else
            kept.append(component);
    }
    while (!kept.isEmpty() && kept.last().isEmpty())
        kept.removeLast();
    QString result;
    result.reserve(absolute.size());
    for (const QStringView component : kept)
        result.append(u'/').append(component);
    return result.isEmpty() ? QStringLiteral("/") : result;
}

bool liesAtOrBelow(const QString &path, const QString &folder)
{
    return path.startsWith(folder)
        && (path.size() == folder.size() || path.at(folder.size()) == u'/');
}

QString lastPathComponent(const QString &path)
{
    QStringView rest = path;
    while (rest.size() > 1 && rest.endsWith(u'/'))
        rest.chop(1);
    if (rest == u"/")
        return rest.toString();
    return rest.sliced(rest.lastIndexOf(u'/') + 1).toString();
}

QString pathExtension(const QString &path)
{
    const QString name = lastPathComponent(path);
    const qsizetype dot = extensionDot(name);
    return dot < 0 ? QString() : name.sliced(dot + 1);
}

QString lastPathComponentWithoutExtension(const QString &path)
{
    const QString name = lastPathComponent(path);
    const qsizetype dot = extensionDot(name);
    return dot < 0 ? name : name.first(dot);
}

} // namespace zorvane::records
