#include "filter/rule_normalization.h"

#include "app/records/code_identity.h"
#include "app/records/own_identifiers.h"
#include "app/records/paths.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace zorvane::filter
{

QStringList normalizedCodeIdentityKeys(const QStringList &keys, const QStringList &ownIdentifiers)
{
    QStringList result;
    QSet<QString> kept;
    for (const QString &key : keys) {
        const auto identity = records::identityFromKey(key);
        if (!identity || records::belongsTo(ownIdentifiers, identity->signingIdentifier))
            continue;
        QString canonical = records::identityKey(*identity);
        if (kept.contains(canonical))
            continue;
        kept.insert(canonical);
        result.append(std::move(canonical));
    }
    return result;
}

QStringList normalizedApplicationPaths(const QStringList &paths)
{
    QStringList result;
    for (const QString &path : paths) {
        QString standardized = records::standardizedPath(path);
        if (standardized.endsWith(".app"_L1))
            result.append(std::move(standardized));
    }
    result.removeDuplicates();
    return result;
}

} // namespace zorvane::filter
