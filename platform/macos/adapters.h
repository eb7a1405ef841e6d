#pragma once

#include "platform/platform.h"
#include "platform/single_instance.h"

#include <memory>

/**
 * @file
 * The ports of macOS, each a thin adapter over one of its frameworks. What an adapter is stays in
 * its own file: Objective-C objects are members only where their counts are kept for them, so no
 * class that has one is declared for plain C++.
 *
 * Main thread, after the application object; each lives by the rules of its port.
 */
namespace zorvane::platform::macos
{

[[nodiscard]] std::unique_ptr<Log> makeLog();
[[nodiscard]] std::unique_ptr<Preferences> makePreferences();
[[nodiscard]] std::unique_ptr<PreferencesSuites> makePreferencesSuites();
[[nodiscard]] std::unique_ptr<CodeSignatures> makeCodeSignatures();
[[nodiscard]] std::unique_ptr<Bundles> makeBundles();
[[nodiscard]] std::unique_ptr<DirectoryWalk> makeDirectoryWalk();
[[nodiscard]] std::unique_ptr<Icons> makeIcons();
[[nodiscard]] std::unique_ptr<MainBundle> makeMainBundle();
[[nodiscard]] std::unique_ptr<Entitlements> makeEntitlements();
[[nodiscard]] std::unique_ptr<FilterManager> makeFilterManager();
[[nodiscard]] std::unique_ptr<SystemExtensions> makeSystemExtensions();
[[nodiscard]] std::unique_ptr<SystemActions> makeSystemActions();
[[nodiscard]] std::unique_ptr<FileAccess> makeFileAccess();
[[nodiscard]] std::unique_ptr<MotionPreference> makeMotionPreference();
[[nodiscard]] std::unique_ptr<ManifestFetcher> makeManifestFetcher();
/** Before the application's loop begins, or the response that started the program is lost. */
[[nodiscard]] std::unique_ptr<UserNotifications> makeUserNotifications();

} // namespace zorvane::platform::macos
