#include "platform/simulated/bundle_layout.h"

#include "platform/simulated/property_list.h"
#include "platform/simulated/small_file.h"

#include <QStringList>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace zorvane::platform::simulated
{

namespace
{

/** The folders that tell the layouts apart, as far as a bundle has them. */
struct Markers {
    bool contents = false;
    bool resources = false;
    bool supportFiles = false;
    bool versions = false;
};

std::optional<Markers> markersOf(const fs::path &path)
{
    std::error_code error;
    fs::directory_iterator entry(path, error);
    if (error)
        return std::nullopt;
    Markers markers;
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_symlink(ignored) && !entry->is_directory(ignored))
            continue;
        const QString name = QString::fromStdString(entry->path().filename().string());
        const auto is
            = [&](QLatin1String other) { return name.compare(other, Qt::CaseInsensitive) == 0; };
        markers.contents = markers.contents || is("Contents"_L1);
        markers.resources = markers.resources || is("Resources"_L1);
        markers.supportFiles = markers.supportFiles || is("Support Files"_L1);
        markers.versions = markers.versions || is("Versions"_L1);
    }
    return markers;
}

/** Replaces what keys for this system override, and drops those keys. */
QVariantMap withOverrides(const QVariantMap &information)
{
    static const QString suffix = u"-macos"_s;
    static const QStringList fixed{u"CFBundleIdentifier"_s, u"CFBundleExecutable"_s};
    QVariantMap result = information;
    for (auto entry = information.cbegin(); entry != information.cend(); ++entry) {
        if (!entry.key().endsWith(suffix))
            continue;
        result.remove(entry.key());
        const QString key = entry.key().chopped(suffix.size());
        if (!fixed.contains(key))
            result.insert(key, entry.value());
    }
    return result;
}

} // namespace

std::optional<BundleLayout> bundleLayout(const fs::path &path)
{
    const std::optional<Markers> markers = markersOf(path);
    if (!markers)
        return std::nullopt;
    const bool isFramework = path.extension() == ".framework";
    if (markers->resources && (isFramework || !markers->contents))
        return BundleLayout{path / "Resources", path / "Resources"};
    if (markers->contents)
        return BundleLayout{path / "Contents", path / "Contents" / "Resources"};
    if (markers->supportFiles)
        return BundleLayout{path / "Support Files", path / "Support Files" / "Resources"};
    const fs::path version = path / "Versions" / "Current" / "Resources";
    std::error_code ignored;
    if (markers->versions && fs::is_directory(version, ignored))
        return BundleLayout{version, version};
    return BundleLayout{path, path};
}

QVariantMap readBundleInformation(const BundleLayout &layout)
{
    for (const char *name : {"Info-macos.plist", "Info.plist"}) {
        const fs::path path = layout.information / name;
        std::error_code ignored;
        if (!fs::exists(path, ignored))
            continue;
        const auto bytes = readSmallFile(path, propertyListSizeLimit);
        return bytes ? withOverrides(readPropertyList(*bytes).toMap()) : QVariantMap();
    }
    return {};
}

} // namespace zorvane::platform::simulated
