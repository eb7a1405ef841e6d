#pragma once

#include <filesystem>
#include <optional>
#include <QVariant>

namespace zorvane::platform::simulated
{

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

/**
 * The information dictionary of a bundle: "Info-macos.plist", or "Info.plist" if there is no such
 * file. A key with the suffix "-macos" replaces the one without, but for the identifier and the
 * executable. Empty if the file is missing, unreadable or no dictionary. Any thread.
 */
[[nodiscard]] QVariantMap readBundleInformation(const BundleLayout &layout);

} // namespace zorvane::platform::simulated
