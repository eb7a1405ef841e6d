#pragma once

#include <filesystem>
#include <optional>
#include <QVariant>

namespace zorvane::platform::simulated
{

/**
 * The folders that tell layouts apart, as far as a bundle has them: folders or links, named
 * "Contents", "Resources", "Support Files" and "Versions" in any letter case. The system that
 * bundles are made for does not tell letter cases apart. Where files are, as here, the name that is
 * found is kept, and one in the very case comes before others; names further inside have to be
 * right.
 */
struct BundleFolders {
    std::optional<std::filesystem::path> contents;
    std::optional<std::filesystem::path> resources;
    std::optional<std::filesystem::path> supportFiles;
    std::optional<std::filesystem::path> versions;
};

/** What stands in the folder at @p path. Nothing if there is none or it cannot be listed. Any
 * thread. */
[[nodiscard]] std::optional<BundleFolders> bundleFolders(const std::filesystem::path &path);

/** Where the parts of a bundle stand. */
struct BundleLayout {
    /** The folder of Info.plist. */
    std::filesystem::path information;
    /** The folder of icons and of the localised folders. */
    std::filesystem::path resources;
};

/**
 * The layout of the folder at @p path, chosen by what it holds, in this order: "Contents",
 * "Resources", "Support Files", "Versions/Current/Resources", everything at the root. A framework
 * prefers "Resources" to "Contents". The information of a layout not chosen is not looked at.
 * Nothing if there is no folder or it cannot be listed. Any thread.
 */
[[nodiscard]] std::optional<BundleLayout> bundleLayout(const std::filesystem::path &path);

/** The longest property list of a bundle that is read, in bytes; real ones have some kilobytes. */
inline constexpr qint64 bundleTableSizeLimit = qint64{4} * 1024 * 1024;

/** The dictionary in a property list of a bundle; empty if the file is missing, unreadable, too
 * long or no dictionary. Any thread. */
[[nodiscard]] QVariantMap readBundleTable(const std::filesystem::path &path);

/**
 * The information dictionary of a bundle: "Info-macos.plist", or "Info.plist" if there is no such
 * file. A key with the suffix "-macos" replaces the one without, but for the identifier and the
 * executable. Empty if the file is missing, unreadable or no dictionary. Any thread.
 */
[[nodiscard]] QVariantMap readBundleInformation(const BundleLayout &layout);

} // namespace zorvane::platform::simulated
