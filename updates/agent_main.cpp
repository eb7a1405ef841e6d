#include "platform/platform.h"
#include "updates/update_agent.h"

#include <QCoreApplication>

using namespace zorvane;

/** The unattended check. Ends with 0 whatever it found, also offline. */
int main(int argc, char *argv[])
{
#ifdef Q_OS_MACOS
    // Without windows Qt's own loop would run, which leaves the system's main queue alone.
    qputenv("QT_EVENT_DISPATCHER_CORE_FOUNDATION", "1");
#endif
    const QCoreApplication application(argc, argv);
    platform::Platform platform = platform::makePlatform();
    updates::UpdateAgent agent(platform);
    agent.run(&QCoreApplication::quit);
    return QCoreApplication::exec();
}
