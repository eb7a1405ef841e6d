#include "filter/rule_normalization.h"

#include "app/records/code_identity.h"
#include "app/records/own_identifiers.h"
#include "app/records/paths.h"

#include <QDir>
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
    constexpr auto ending = ".app"_L1;
    QStringList result;
    // What a relative path is bound to may be a bundle as well.
    const bool isInBundle = QDir::currentPath().contains(ending);
    for (const QString &path : paths) {
        // A look at the text spares the costly part for all that cannot end as it has to.
        if (!path.contains(ending) && !(isInBundle && !path.startsWith(u'/')))
            continue;
        QString standardized = records::standardizedPath(path);
        if (standardized.endsWith(ending))
            result.append(std::move(standardized));
    }
    result.removeDuplicates();
    return result;
}

} // namespace zorvane::filter
