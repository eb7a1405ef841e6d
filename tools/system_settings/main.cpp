#include "platform/simulated/log.h"
#include "platform/simulated/single_instance.h"
#include "platform/simulated/system_actions.h"
#include "tools/system_settings/settings_window.h"

#include <QGuiApplication>

using namespace Qt::StringLiterals;
using namespace zorvane;

namespace
{

int run(platform::SingleInstance &instance)
{
    tools::SettingsWindow settings(platform::simulated::SimulatedSystem::standardFolder());
    if (settings.window() == nullptr)
        return EXIT_FAILURE;
    instance.onBringForward([] { platform::simulated::DesktopActions().comeToFront(); });
    settings.window()->show();
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(u"zorvane-system-settings"_s);
    QGuiApplication::setApplicationDisplayName(u"System Settings"_s);
    platform::simulated::useLogFormat();

    using Outcome = platform::SingleInstance::Outcome;
    platform::simulated::LockedInstance instance(
        platform::simulated::SimulatedSystem::standardFolder(), u"zorvane-system-settings"_s);
    switch (instance.acquire()) {
    case Outcome::First:
        return run(instance);
    case Outcome::AnotherRuns:
        return EXIT_SUCCESS;
    case Outcome::Unusable:
        break;
    }
    return EXIT_FAILURE;
}
