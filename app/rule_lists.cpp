#include "app/rule_lists.h"

#include "app/records/own_identifiers.h"

namespace zorvane::app
{

QStringList blockedCodeIdentityKeys(const QList<records::BlockedApplication> &applications,
    const std::optional<QString> &ownBundleIdentifier)
{
    const QStringList own = records::ownIdentifiers(ownBundleIdentifier);
    QStringList keys;
    for (const records::BlockedApplication &application : applications) {
        for (const records::CodeIdentity &identity : records::blockingCodeIdentities(application)) {
            if (!records::belongsTo(own, identity.signingIdentifier))
                keys.append(records::identityKey(identity));
        }
    }
    keys.removeDuplicates();
    return keys;
}

QStringList blockedApplicationPaths(const QList<records::BlockedApplication> &applications)
{
    QStringList paths;
    for (const records::BlockedApplication &application : applications)
        paths.append(application.path);
    return paths;
}

} // namespace zorvane::app
