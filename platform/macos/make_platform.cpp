#include "platform/bundle_reading.h"
#include "platform/macos/adapters.h"
#include "platform/platform.h"
#include "platform/standard_scheduler.h"

#include <QFile>
#include <QStandardPaths>

namespace zorvane::platform
{

namespace
{

/** In the user's Application Support. */
std::filesystem::path setAsideFolder()
{
    const QString support = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return std::filesystem::path(QFile::encodeName(support).toStdString()) / "Zorvane"
        / "set-aside";
}

} // namespace

Platform makePlatform(std::chrono::milliseconds /*launchPause*/)
{
    using namespace macos;

    Platform platform;
    platform.scheduler = std::make_unique<StandardScheduler>();
    platform.log = makeLog();
    platform.preferences = makePreferences();
    platform.suites = makePreferencesSuites();
    BundleReading reading = makeBundleReading();
    platform.signatures = std::move(reading.signatures);
    platform.bundles = std::move(reading.bundles);
    platform.walk = std::move(reading.walk);
    platform.icons = std::move(reading.icons);
    platform.mainBundle = makeMainBundle();
    platform.entitlements = makeEntitlements();
    platform.filterManager = makeFilterManager();
    platform.systemExtensions = makeSystemExtensions();
    platform.actions = makeSystemActions();
    platform.fileAccess = makeFileAccess();
    platform.motion = makeMotionPreference();
    platform.manifestFetcher = makeManifestFetcher();
    platform.notifications = makeUserNotifications();
    platform.setAsideFolder = setAsideFolder();
    return platform;
}

} // namespace zorvane::platform
