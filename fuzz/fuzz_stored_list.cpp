#include "app/records/blocked_application_json.h"
#include "app/records/own_identifiers.h"
#include "app/rule_lists.h"
#include "filter/rule_normalization.h"
#include "fuzz/target.h"

using namespace zorvane;
using fuzz::require;

/** Reads the input as a stored list, and makes of it what the program makes of one. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto list = records::decodedApplications(QByteArrayView(data, qsizetype(size)));
    if (!list)
        return 0;
    require(records::decodedApplications(records::encodedApplications(*list)) == list);
    for (const records::BlockedApplication &application : *list) {
        const auto merged = records::mergingObservedIdentities(
            application, records::allCodeIdentities(application));
        require(records::mergingObservedIdentities(merged, {}) == merged);
    }
    const auto own = records::ownIdentifiers(std::nullopt);
    const auto keys
        = filter::normalizedCodeIdentityKeys(app::blockedCodeIdentityKeys(*list, {}), own);
    require(filter::normalizedCodeIdentityKeys(keys, own) == keys);
    return 0;
}
