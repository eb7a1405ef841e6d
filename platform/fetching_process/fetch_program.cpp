#include "platform/fetching_process/fetch_program.h"

#include "platform/fetching_process/exchange_format.h"

#include <cstdio>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <unistd.h>

namespace zorvane::platform::fetching_process
{

namespace
{

constexpr int wrongUsage = 2;

int say(const QByteArray &answer)
{
    const auto size = size_t(answer.size());
    const bool said
        = std::fwrite(answer.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
    return said ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int runFetchProgram(const QStringList &arguments, ManifestFetcher &fetcher)
{
    const auto request = decodedRequest(arguments);
    if (!request) {
        std::fputs("Arguments: ADDRESS ACCEPT LONGEST-BODY IDLE-TIMEOUT TOTAL-TIMEOUT, the "
                   "timeouts in milliseconds\n",
            stderr);
        return wrongUsage;
    }
    // Nothing is ever said there, so what there is to read is the end.
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(
        &input, &QSocketNotifier::activated, &input, [] { QCoreApplication::exit(EXIT_FAILURE); });
    fetcher.fetch(*request, [](const ManifestFetcher::Result &result) {
        QCoreApplication::exit(say(encodedAnswer(result)));
    });
    return QCoreApplication::exec();
}

} // namespace zorvane::platform::fetching_process
