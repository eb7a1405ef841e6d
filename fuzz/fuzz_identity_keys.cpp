#include "app/records/code_identity.h"
#include "app/records/own_identifiers.h"
#include "filter/rule_normalization.h"
#include "fuzz/target.h"

using namespace zorvane;
using fuzz::require;

/** Reads each line of the input as an identity key and as a path of a rule. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QStringList lines = QString::fromUtf8(QByteArrayView(data, qsizetype(size))).split(u'\n');
    for (const QString &line : lines) {
        if (const auto identity = records::identityFromKey(line))
            require(records::identityFromKey(records::identityKey(*identity)) == identity);
    }
    const auto own = records::ownIdentifiers(std::nullopt);
    const QStringList keys = filter::normalizedCodeIdentityKeys(lines, own);
    require(filter::normalizedCodeIdentityKeys(keys, own) == keys);
    const QStringList paths = filter::normalizedApplicationPaths(lines);
    require(filter::normalizedApplicationPaths(paths) == paths);
    return 0;
}
