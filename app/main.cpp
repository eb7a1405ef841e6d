#include "app/app_block_store.h"
#include "platform/background_runs.h"
#include "platform/platform.h"
#include "platform/single_instance.h"
#include "ui/fonts.h"
#include "ui/user_interface.h"

#include <chrono>
#include <QGuiApplication>

using namespace Qt::StringLiterals;
using namespace zorvane;

namespace
{

/** The time of a launch that belongs to the window. */
constexpr std::chrono::milliseconds launchPause{500};

int run(platform::SingleInstance &instance)
{
    platform::Platform platform = platform::makePlatform(launchPause);
    // Before the window, so that the saved list is on its way while that is built.
    app::AppBlockStore store(platform);
    ui::UserInterface interface(store, platform);
    if (interface.window() == nullptr)
        return EXIT_FAILURE;
    instance.onBringForward([&interface] { interface.bringForward(); });
    interface.show();
    // A copy on a disk image or among the downloads is only on its way.
    if (store.filterController()->isRunningFromApplicationsFolder())
        platform::requestBackgroundRuns();
    const int result = QGuiApplication::exec();
    instance.onBringForward(nullptr);
    return result;
}

} // namespace

int main(int argc, char *argv[])
{
    const auto fonts = ui::readFontsAhead();
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(u"Zorvane"_s);
    QGuiApplication::setApplicationVersion(QStringLiteral(ZORVANE_VERSION));
    QGuiApplication::setDesktopFileName(u"dev.kestrelworks.Zorvane"_s);

    using Outcome = platform::SingleInstance::Outcome;
    const auto instance = platform::makeSingleInstance();
    switch (instance->acquire()) {
    case Outcome::First:
        return run(*instance);
    case Outcome::AnotherRuns:
        return EXIT_SUCCESS;
    case Outcome::Unusable:
        return EXIT_FAILURE;
    }
    return EXIT_FAILURE;
}
