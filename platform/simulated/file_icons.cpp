#include "platform/simulated/file_icons.h"

#include "platform/simulated/bundle_layout.h"
#include "platform/simulated/icon_family.h"
#include "platform/simulated/png_icon.h"
#include "platform/simulated/property_list.h"
#include "platform/simulated/small_file.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace zorvane::platform::simulated
{

namespace
{

/** Real icon files have at most a few megabytes. */
constexpr qint64 fileLimit = qint64(16) * 1024 * 1024;
/** The longest side of an image that is decoded, in pixels. */
constexpr int sideLimit = 4096;

QImage readIcon(const QByteArray &file, int side)
{
    return isPng(file) ? drawnPng(file, sideLimit) : iconOfFamily(file, side);
}

/** The names that the icon's file may have, in the order in which they are tried. */
QStringList candidateNames(const QVariantMap &information)
{
    QStringList names;
    const QString file = textOf(information.value(u"CFBundleIconFile"_s)).value_or(QString());
    if (!file.isEmpty())
        names << file << file + u".icns"_s << file + u".png"_s;
    const QString name = textOf(information.value(u"CFBundleIconName"_s)).value_or(QString());
    if (!name.isEmpty())
        names << name + u".icns"_s << name + u"@2x.png"_s << name + u".png"_s << name;
    return names;
}

} // namespace

QImage FileIcons::icon(const std::filesystem::path &path, int side) const
{
    const std::optional<BundleLayout> layout = bundleLayout(path);
    if (!layout)
        return {};
    for (const QString &name : candidateNames(readBundleInformation(*layout))) {
        // A bundle has its icon inside, and a file name ends at a zero character.
        if (name.contains(u'/') || name.contains(QChar::Null))
            continue;
        const auto file = readSmallFile(layout->resources / name.toStdString(), fileLimit);
        if (!file)
            continue;
        if (QImage image = readIcon(*file, side); !image.isNull())
            return image;
    }
    return {};
}

} // namespace zorvane::platform::simulated
