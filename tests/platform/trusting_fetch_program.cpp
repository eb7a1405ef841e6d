// The program that fetches, but that it trusts an authority of the test's own, for tests.

#include "platform/fetching_process/fetch_program.h"
#include "platform/qt_network/qt_manifest_fetcher.h"
#include "platform/standard_scheduler.h"

#include <QCoreApplication>

using namespace zorvane::platform;

/** $AUTHORITY is the file of a certificate. */
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    StandardScheduler scheduler;
    qt_network::QtManifestFetcher fetcher(
        scheduler, QSslCertificate::fromPath(qEnvironmentVariable("AUTHORITY")));
    return fetching_process::runFetchProgram(QCoreApplication::arguments().sliced(1), fetcher);
}
