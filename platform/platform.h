#pragma once

#include "platform/bundles.h"
#include "platform/code_signatures.h"
#include "platform/directory_walk.h"
#include "platform/entitlements.h"
#include "platform/file_access.h"
#include "platform/filter_manager.h"
#include "platform/icons.h"
#include "platform/log.h"
#include "platform/main_bundle.h"
#include "platform/manifest_fetcher.h"
#include "platform/motion_preference.h"
#include "platform/preferences.h"
#include "platform/scheduler.h"
#include "platform/system_actions.h"
#include "platform/system_extensions.h"
#include "platform/user_notifications.h"

#include <chrono>
#include <filesystem>
#include <memory>

namespace zorvane::platform
{

/** All services of one system. Chosen once, by a program's main, and handed on from there. */
struct Platform {
    Platform() = default;
    Platform(Platform &&) = default;
    Platform &operator=(Platform &&) = delete;
    /** Background jobs read through the services below, so the jobs end first. */
    ~Platform()
    {
        if (scheduler)
            scheduler->shutDown();
    }

    // The scheduler comes first: it outlives every service that posts through it.
    std::unique_ptr<Scheduler> scheduler;
    std::unique_ptr<Log> log;
    std::unique_ptr<Preferences> preferences;
    std::unique_ptr<PreferencesSuites> suites;
    std::unique_ptr<CodeSignatures> signatures;
    std::unique_ptr<Bundles> bundles;
    std::unique_ptr<DirectoryWalk> walk;
    std::unique_ptr<Icons> icons;
    std::unique_ptr<MainBundle> mainBundle;
    std::unique_ptr<Entitlements> entitlements;
    std::unique_ptr<FilterManager> filterManager;
    std::unique_ptr<SystemExtensions> systemExtensions;
    std::unique_ptr<SystemActions> actions;
    std::unique_ptr<FileAccess> fileAccess;
    std::unique_ptr<MotionPreference> motion;
    std::unique_ptr<ManifestFetcher> manifestFetcher;
    std::unique_ptr<UserNotifications> notifications;

    /** Where a stored list that cannot be read is kept for its user; empty: nowhere. */
    std::filesystem::path setAsideFolder;
};

/**
 * The ports of the system that this program was built for. What nobody would see of them and the
 * program would have to do or start itself comes after @p launchPause. Main thread, after the
 * application object.
 */
[[nodiscard]] Platform makePlatform(std::chrono::milliseconds launchPause = {});

} // namespace zorvane::platform
