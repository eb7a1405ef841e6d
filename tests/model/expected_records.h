#pragma once

#include "app/records/blocked_application.h"
#include "inspection/discovered_network_process.h"
#include "model/expected_filter.h"

#include <QList>

/**
 * @file
 * What has to become of records, told a second time and as plainly as the rules are stated: for the
 * texts of the models, which are plain ASCII, and paths that need no tidying.
 */
namespace zorvane::tests
{

using Applications = QList<records::BlockedApplication>;
using Processes = QList<inspection::DiscoveredNetworkProcess>;

/** True if it is this product, or has a part of it inside. */
[[nodiscard]] bool isOurOwn(const records::BlockedApplication &application);

/** True if an older inspection made it. */
[[nodiscard]] bool isOutOfDate(const records::BlockedApplication &application);

/** Each application with the identities of those of @p processes that belong to it. */
[[nodiscard]] Applications expectedMerge(
    const Applications &applications, const Processes &processes);

/** What the filter has to be told for a list. */
[[nodiscard]] Rules expectedRules(const Applications &applications);

} // namespace zorvane::tests
