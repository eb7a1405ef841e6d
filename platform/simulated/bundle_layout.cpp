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

/** Keeps the path of @p entry if its name is @p name but for letter case; the very name wins. */
void keep(const fs::directory_entry &entry, QLatin1String name, std::optional<fs::path> &kept)
{
    const QString found = QString::fromStdString(entry.path().filename().string());
    if (found.compare(name, Qt::CaseInsensitive) != 0)
        return;
    if (!kept || found == name)
        kept = entry.path();
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

std::optional<BundleFolders> bundleFolders(const fs::path &path)
{
    std::error_code error;
    fs::directory_iterator entry(path, error);
    if (error)
        return std::nullopt;
    BundleFolders folders;
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_symlink(ignored) && !entry->is_directory(ignored))
            continue;
        keep(*entry, "Contents"_L1, folders.contents);
        keep(*entry, "Resources"_L1, folders.resources);
        keep(*entry, "Support Files"_L1, folders.supportFiles);
        keep(*entry, "Versions"_L1, folders.versions);
    }
    return folders;
}

std::optional<BundleLayout> bundleLayout(const fs::path &path)
{
    const std::optional<BundleFolders> folders = bundleFolders(path);
    if (!folders)
        return std::nullopt;
    const bool isFramework = path.extension() == ".framework";
    if (folders->resources && (isFramework || !folders->contents))
        return BundleLayout{*folders->resources, *folders->resources};
    if (folders->contents)
        return BundleLayout{*folders->contents, *folders->contents / "Resources"};
    if (folders->supportFiles)
        return BundleLayout{*folders->supportFiles, *folders->supportFiles / "Resources"};
    std::error_code ignored;
    if (folders->versions) {
        const fs::path version = *folders->versions / "Current" / "Resources";
        if (fs::is_directory(version, ignored))
            return BundleLayout{version, version};
    }
    return BundleLayout{path, path};
}

QVariantMap readBundleTable(const fs::path &path)
{
    const auto bytes = readSmallFile(path, bundleTableSizeLimit);
    return bytes ? readPropertyList(*bytes).toMap() : QVariantMap();
}

QVariantMap readBundleInformation(const BundleLayout &layout)
{
    for (const char *name : {"Info-macos.plist", "Info.plist"}) {
        const fs::path path = layout.information / name;
        std::error_code ignored;
        if (fs::exists(path, ignored))
            return withOverrides(readBundleTable(path));
    }
    return {};
}

} // namespace zorvane::platform::simulated
