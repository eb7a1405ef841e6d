#include "model/expected_records.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

using inspection::DiscoveredNetworkProcess;
using records::BlockedApplication;
using records::CodeIdentity;

namespace
{

bool isOurOwnIdentifier(const QString &identifier)
{
    const QString product = u"dev.kestrelworks.Zorvane"_s;
    return identifier == product || identifier.startsWith(product + u'.');
}

bool isInterpreter(const QString &identifier)
{
    static const QStringList names{u"bash"_s, u"dash"_s, u"java"_s, u"node"_s, u"perl"_s, u"php"_s,
        u"python"_s, u"python2"_s, u"python3"_s, u"ruby"_s, u"sh"_s, u"swift"_s, u"zsh"_s};
    return names.contains(identifier.toLower());
}

CodeIdentity identityOf(const QString &identifier, const std::optional<QString> &team)
{
    const QString trimmed = team.value_or(QString()).trimmed();
    return {identifier, trimmed.isEmpty() ? std::nullopt : std::optional(trimmed)};
}

/** The main identity first. */
QList<CodeIdentity> identitiesOf(const BlockedApplication &application)
{
    return QList{identityOf(application.signingIdentifier, application.teamIdentifier)}
    + application.auxiliaryCodeIdentities.value_or(QList<CodeIdentity>());
}

bool belongs(const DiscoveredNetworkProcess &process, const BlockedApplication &application)
{
    const auto identities = identitiesOf(application);
    if (identities.contains(identityOf(process.signingIdentifier, process.teamIdentifier)))
        return true;
    if (process.sourceApplicationIdentifier
        && identities.contains(identityOf(
            *process.sourceApplicationIdentifier, process.sourceApplicationTeamIdentifier)))
        return true;
    const QString path = process.executablePath.value_or(QString());
    return path == application.path || path.startsWith(application.path + u'/');
}

BlockedApplication mergedRecord(const BlockedApplication &application, const Processes &processes)
{
    const auto identities = identitiesOf(application);
    QList<CodeIdentity> candidates = identities.sliced(1);
    for (const DiscoveredNetworkProcess &process : processes) {
        const auto identity = identityOf(process.signingIdentifier, process.teamIdentifier);
        if (belongs(process, application) && identity.teamIdentifier
            && !isInterpreter(identity.signingIdentifier))
            candidates.append(identity);
    }
    QList<CodeIdentity> auxiliary;
    for (const CodeIdentity &candidate : candidates) {
        if (candidate != identities.first() && !auxiliary.contains(candidate))
            auxiliary.append(candidate);
    }
    std::ranges::stable_sort(auxiliary, {}, [](const CodeIdentity &identity) {
        return std::pair(identity.signingIdentifier, identity.teamIdentifier.value_or(QString()));
    });
    BlockedApplication result = application;
    result.auxiliaryCodeIdentities = auxiliary;
    result.auxiliarySigningIdentifiers.reset();
    result.inspectionVersion = 5;
    return result;
}

QString keyOf(const CodeIdentity &identity)
{
    const auto encoded
        = [](const QString &text) { return QString::fromLatin1(text.toUtf8().toBase64()); };
    return encoded(identity.teamIdentifier.value_or(QString())) + u'.'
        + encoded(identity.signingIdentifier);
}

} // namespace

bool isOurOwn(const BlockedApplication &application)
{
    return isOurOwnIdentifier(application.bundleIdentifier)
        || std::ranges::any_of(
            identitiesOf(application), isOurOwnIdentifier, &CodeIdentity::signingIdentifier);
}

bool isOutOfDate(const BlockedApplication &application)
{
    return !application.auxiliaryCodeIdentities || application.inspectionVersion != 5;
}

Applications expectedMerge(const Applications &applications, const Processes &processes)
{
    Applications result;
    for (const BlockedApplication &application : applications)
        result.append(mergedRecord(application, processes));
    return result;
}

Rules expectedRules(const Applications &applications)
{
    Rules rules;
    for (const BlockedApplication &application : applications) {
        const auto identities = identitiesOf(application);
        for (qsizetype i = 0; i < identities.size(); ++i) {
            const CodeIdentity &identity = identities.at(i);
            const bool isBlocking
                = i == 0 || (identity.teamIdentifier && !isInterpreter(identity.signingIdentifier));
            if (isBlocking && !isOurOwnIdentifier(identity.signingIdentifier))
                rules.keys.append(keyOf(identity));
        }
        rules.paths.append(application.path);
    }
    // Two applications may share a helper, or have stood at one path, one after the other.
    rules.keys.removeDuplicates();
    rules.paths.removeDuplicates();
    return rules;
}

} // namespace zorvane::tests
