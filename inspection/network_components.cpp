#include "inspection/network_components.h"

#include "app/records/collation.h"
#include "app/records/paths.h"
#include "inspection/process_matching.h"

#include <algorithm>
#include <array>
#include <QSet>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace zorvane::inspection
{

using records::BlockedApplication;
using records::CodeIdentity;
using Kind = ApplicationNetworkComponent::Kind;

namespace
{

template <typename Value>
size_t hashOptional(const std::optional<Value> &value, size_t seed) noexcept
{
    return value ? qHashMulti(seed, true, *value) : qHashMulti(seed, false);
}

ApplicationNetworkComponent observedComponent(
    const DiscoveredNetworkProcess &process, const BlockedApplication &application)
{
    // The source application stands first, and must stay there: ids are compared across loads.
    const QStringList id{process.sourceApplicationTeamIdentifier.value_or(QString()),
        process.sourceApplicationIdentifier.value_or(QString()),
        process.teamIdentifier.value_or(QString()), process.signingIdentifier,
        process.executablePath.value_or(QString())};
    const bool hasPath = process.executablePath && !process.executablePath->isEmpty();
    const bool isMain = process.signingIdentifier == application.signingIdentifier;
    return {
        .id = id.join(u'|'),
        .name
        = hasPath ? records::lastPathComponent(*process.executablePath) : process.signingIdentifier,
        .signingIdentifier = process.signingIdentifier,
        .teamIdentifier = process.teamIdentifier,
        .executablePath = process.executablePath,
        .kind = isMain ? Kind::Main : Kind::Observed,
        .lastSeenAt = process.lastSeenAt,
    };
}

ApplicationNetworkComponent inspectedComponent(
    const CodeIdentity &identity, const BlockedApplication &application)
{
    // A stored team may hold blanks; they make it no other team.
    const bool isMain = CodeIdentity::make(identity.signingIdentifier, identity.teamIdentifier)
        == records::primaryCodeIdentity(application);
    return {
        .id = "bundled|"_L1 + records::identityKey(identity),
        .name = isMain ? application.name : identity.signingIdentifier,
        .signingIdentifier = identity.signingIdentifier,
        .teamIdentifier = identity.teamIdentifier,
        .executablePath = std::nullopt,
        .kind = isMain ? Kind::Main : Kind::Bundled,
        .lastSeenAt = std::nullopt,
    };
}

} // namespace

size_t qHash(const ApplicationNetworkComponent &component, size_t seed) noexcept
{
    seed = qHashMulti(seed, component.id, component.name, component.signingIdentifier,
        static_cast<int>(component.kind));
    seed = hashOptional(component.teamIdentifier, seed);
    seed = hashOptional(component.executablePath, seed);
    return hashOptional(component.lastSeenAt, seed);
}

QString label(Kind kind)
{
    switch (kind) {
    case Kind::Main:
        return u"Main app"_s;
    case Kind::Bundled:
        return u"Bundled"_s;
    case Kind::Observed:
        return u"Observed"_s;
    }
    return {};
}

std::optional<Kind> kindFromLabel(const QString &text)
{
    for (const Kind kind : {Kind::Main, Kind::Bundled, Kind::Observed}) {
        if (label(kind) == text)
            return kind;
    }
    return std::nullopt;
}

QList<ApplicationNetworkComponent> networkComponents(
    const BlockedApplication &application, const QList<DiscoveredNetworkProcess> &processes)
{
    QList<DiscoveredNetworkProcess> observed;
    const ApplicationMatcher matcher(application);
    std::ranges::copy_if(processes, std::back_inserter(observed),
        [&](const DiscoveredNetworkProcess &process) { return matcher.owns(process); });
    std::ranges::stable_sort(
        observed, std::ranges::greater(), &DiscoveredNetworkProcess::lastSeenAt);

    QList<ApplicationNetworkComponent> components;
    QSet<CodeIdentity> observedIdentities;
    for (const DiscoveredNetworkProcess &process : observed) {
        components.append(observedComponent(process, application));
        observedIdentities.insert(ownIdentity(process));
    }
    for (const CodeIdentity &identity : records::allCodeIdentities(application)) {
        if (!observedIdentities.contains(identity))
            components.append(inspectedComponent(identity, application));
    }

    const records::NameOrder byName;
    std::ranges::stable_sort(components, [&](const auto &a, const auto &b) {
        const bool aIsMain = a.kind == Kind::Main;
        const bool bIsMain = b.kind == Kind::Main;
        return aIsMain != bIsMain ? aIsMain : byName(a.name, b.name);
    });
    return components;
}

} // namespace zorvane::inspection
