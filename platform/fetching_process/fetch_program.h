#pragma once

#include "platform/manifest_fetcher.h"

#include <QStringList>

namespace zorvane::platform::fetching_process
{

/**
 * The program at the other end of a ProcessManifestFetcher, but for its own fetcher: has @p fetcher
 * fetch what @p arguments ask for, and writes the answer to standard output. Ends as well, and
 * fails, when standard input does: nobody waits any more. Returns the status to end with. Main
 * thread.
 */
[[nodiscard]] int runFetchProgram(const QStringList &arguments, ManifestFetcher &fetcher);

} // namespace zorvane::platform::fetching_process
