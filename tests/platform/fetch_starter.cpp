// A program that has another one fetch, for tests.

#include "platform/fetching_process/process_manifest_fetcher.h"

#include <QCoreApplication>

using namespace zorvane::platform;
using namespace std::chrono_literals;

/** Starts the program that its first argument names on the address of its second, and ends with
 * whatever answer there is. */
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    fetching_process::ProcessManifestFetcher fetcher(arguments[1]);
    fetcher.fetch({.address = QUrl(arguments[2]),
                      .accept = "*/*",
                      .longestBody = 10,
                      .idleTimeout = 60s,
                      .totalTimeout = 60s},
        [](const auto &) { QCoreApplication::quit(); });
    return QCoreApplication::exec();
}
