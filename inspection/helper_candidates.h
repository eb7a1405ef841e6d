#pragma once

#include "platform/directory_walk.h"

#include <array>
#include <filesystem>
#include <QSet>
#include <QString>
#include <string_view>
#include <vector>

namespace zorvane::inspection
{

/** Where plain executables count as helpers: below these folders of a bundle, at any depth. */
inline constexpr std::array<std::string_view, 7> embeddedHelperDirectories{
    "/Contents/MacOS/",
    "/Contents/Helpers/",
    "/Contents/XPCServices/",
    "/Contents/Library/LoginItems/",
    "/Contents/Library/LaunchAgents/",
    "/Contents/Library/LaunchDaemons/",
    "/Contents/Library/LaunchServices/",
};

/** The extensions of folders that count as helpers wherever they stand in a bundle; lower case. */
[[nodiscard]] const QSet<QString> &nestedBundleExtensions();

/**
 * Everything inside the bundle at @p bundle whose signature tells a helper: nested bundles, and
 * executable images in the helper folders that the current user may execute. The paths begin with
 * @p bundle, which has no trailing slash. Safe to use from any thread; blocks on the disk.
 */
[[nodiscard]] std::vector<std::filesystem::path> helperCandidates(
    const platform::DirectoryWalk &walk, const std::filesystem::path &bundle);

} // namespace zorvane::inspection
