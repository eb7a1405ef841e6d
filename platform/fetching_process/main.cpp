#include "platform/fetching_process/fetch_program.h"
#include "platform/qt_network/qt_manifest_fetcher.h"
#include "platform/standard_scheduler.h"

#include <QCoreApplication>
#include <sys/resource.h>

using namespace zorvane::platform;

namespace
{

constexpr int niceness = 10;

} // namespace

/** Fetches one document over HTTPS for another program. */
int main(int argc, char *argv[])
{
    // Whoever waits for the answer may be building a window meanwhile.
    ::setpriority(PRIO_PROCESS, 0, niceness);
    const QCoreApplication application(argc, argv);
    StandardScheduler scheduler;
    qt_network::QtManifestFetcher fetcher(scheduler);
    return fetching_process::runFetchProgram(QCoreApplication::arguments().sliced(1), fetcher);
}
