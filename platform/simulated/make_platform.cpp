#include "platform/platform.h"

#include "platform/bundle_reading.h"
#include "platform/fetching_process/process_manifest_fetcher.h"
#include "platform/simulated/desktop_motion.h"
#include "platform/simulated/desktop_notifications.h"
#include "platform/simulated/filter_manager.h"
#include "platform/simulated/log.h"
#include "platform/simulated/main_bundle.h"
#include "platform/simulated/preferences.h"
#include "platform/simulated/product_program.h"
#include "platform/simulated/report.h"
#include "platform/simulated/session_bus.h"
#include "platform/simulated/simulated_system.h"
#include "platform/simulated/system_actions.h"
#include "platform/simulated/system_extensions.h"
#include "platform/standard_scheduler.h"

namespace zorvane::platform
{

using namespace Qt::StringLiterals;

Platform makePlatform(std::chrono::milliseconds launchPause)
{
    using namespace simulated;

    useLogFormat();
    const auto system = std::make_shared<SimulatedSystem>(SimulatedSystem::standardFolder());
    Platform platform;
    platform.scheduler = std::make_unique<StandardScheduler>();
    platform.log = std::make_unique<StandardErrorLog>();
    platform.preferences = makeStandardPreferences(*system);
    platform.suites = std::make_unique<FilePreferencesSuites>(system);
    BundleReading reading = makeBundleReading();
    platform.signatures = std::move(reading.signatures);
    platform.bundles = std::move(reading.bundles);
    platform.walk = std::move(reading.walk);
    platform.icons = std::move(reading.icons);
    platform.mainBundle = std::make_unique<SimulatedMainBundle>(system);
    platform.entitlements = std::make_unique<SimulatedEntitlements>(system);
    platform.filterManager = std::make_unique<SimulatedFilterManager>(system, *platform.scheduler);
    platform.systemExtensions
        = std::make_unique<SimulatedSystemExtensions>(system, *platform.scheduler);
    platform.actions = std::make_unique<DesktopActions>();
    platform.fileAccess = std::make_unique<OpenFileAccess>();
    const auto bus = std::make_shared<SessionBus>(*platform.scheduler);
    platform.motion = std::make_unique<DesktopMotion>(bus);
    platform.manifestFetcher = std::make_unique<fetching_process::ProcessManifestFetcher>(
        productProgram(u"zorvane-fetch-manifest"_s), launchPause);
    platform.notifications = std::make_unique<DesktopNotifications>(
        bus, system->notificationsFile(), *platform.scheduler, launchPause);
    platform.setAsideFolder = SimulatedSystem::setAsideFolder();
    qCInfo(simulatedSystem).noquote()
        << "Running on the simulated system in" << textOf(system->folder())
        << "- nothing is blocked on this system";
    return platform;
}

} // namespace zorvane::platform
