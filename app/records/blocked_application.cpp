#include "app/records/blocked_application.h"

#include "app/records/own_identifiers.h"
#include "app/records/text.h"

#include <algorithm>

namespace zorvane::records
{

namespace
{

template <typename Value>
size_t hashOptional(const std::optional<Value> &value, size_t seed) noexcept
{
    return value ? qHashMulti(seed, true, *value) : qHashMulti(seed, false);
}

QList<CodeIdentity> auxiliaryIdentities(const BlockedApplication &application)
{
    return application.auxiliaryCodeIdentities.value_or(QList<CodeIdentity>());
}

} // namespace

size_t qHash(const BlockedApplication &application, size_t seed) noexcept
{
    seed = qHashMulti(seed, application.id, application.name, application.bundleIdentifier,
        application.signingIdentifier);
    seed = hashOptional(application.teamIdentifier, seed);
    seed = hashOptional(application.auxiliaryCodeIdentities, seed);
    seed = hashOptional(application.auxiliarySigningIdentifiers, seed);
    seed = hashOptional(application.inspectionVersion, seed);
    seed = qHashMulti(seed, application.path);
    return hashOptional(application.iconData, seed);
}

bool isStale(const BlockedApplication &application)
{
    return !application.auxiliaryCodeIdentities
        || application.inspectionVersion != currentInspectionVersion;
}

CodeIdentity primaryCodeIdentity(const BlockedApplication &application)
{
    return CodeIdentity::make(application.signingIdentifier, application.teamIdentifier);
}

QList<CodeIdentity> blockingCodeIdentities(const BlockedApplication &application)
{
    QList<CodeIdentity> result{primaryCodeIdentity(application)};
    for (const CodeIdentity &identity : auxiliaryIdentities(application)) {
        if (identity.teamIdentifier && !isInterpreterName(identity.signingIdentifier))
            result.append(identity);
    }
    return result;
}

QList<CodeIdentity> allCodeIdentities(const BlockedApplication &application)
{
    return withoutDuplicates(
        QList<CodeIdentity>{primaryCodeIdentity(application)} + auxiliaryIdentities(application));
}

QStringList allSigningIdentifiers(const BlockedApplication &application)
{
    QStringList result;
    for (const CodeIdentity &identity : allCodeIdentities(application))
        result.append(identity.signingIdentifier);
    return result;
}

BlockedApplication mergingObservedIdentities(
    const BlockedApplication &application, const QList<CodeIdentity> &identities)
{
    QList<CodeIdentity> merged = withoutDuplicates(auxiliaryIdentities(application) + identities);
    merged.removeAll(primaryCodeIdentity(application));
    // Stable, because an absent and an empty team sort alike: merging again must change nothing.
    std::ranges::stable_sort(merged, precedes);

    BlockedApplication result = application;
    result.auxiliaryCodeIdentities = std::move(merged);
    result.auxiliarySigningIdentifiers.reset();
    result.inspectionVersion = currentInspectionVersion;
    return result;
}

bool isOwnApplication(
    const BlockedApplication &application, const std::optional<QString> &ownBundleIdentifier)
{
    const QStringList own = ownIdentifiers(ownBundleIdentifier);
    return belongsTo(own, application.bundleIdentifier)
        || std::ranges::any_of(allSigningIdentifiers(application),
            [&](const QString &identifier) { return belongsTo(own, identifier); });
}

} // namespace zorvane::records
