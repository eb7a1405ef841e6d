#include "app/records/code_identity.h"

#include "app/records/text.h"

#include <algorithm>
#include <array>
#include <QSet>

using namespace Qt::StringLiterals;

namespace zorvane::records
{

CodeIdentity CodeIdentity::make(
    QString signingIdentifier, const std::optional<QString> &teamIdentifier)
{
    return {std::move(signingIdentifier), normalizedTeam(teamIdentifier)};
}

size_t qHash(const CodeIdentity &identity, size_t seed) noexcept
{
    // The marker keeps an absent team apart from an empty one.
    const uchar hasTeam = identity.teamIdentifier.has_value() ? 1 : 0;
    seed = qHashMulti(seed, identity.signingIdentifier, hasTeam);
    return identity.teamIdentifier ? qHashMulti(seed, *identity.teamIdentifier) : seed;
}

bool precedes(const CodeIdentity &a, const CodeIdentity &b)
{
    if (a.signingIdentifier != b.signingIdentifier)
        return precedesByCodePoint(a.signingIdentifier, b.signingIdentifier);
    return precedesByCodePoint(
        a.teamIdentifier.value_or(QString()), b.teamIdentifier.value_or(QString()));
}

QString identityKey(const CodeIdentity &identity)
{
    const QByteArray team = identity.teamIdentifier.value_or(QString()).toUtf8().toBase64();
    const QByteArray identifier = identity.signingIdentifier.toUtf8().toBase64();
    return QString::fromLatin1(team + '.' + identifier);
}

std::optional<CodeIdentity> identityFromKey(const QString &key)
{
    const qsizetype separator = key.indexOf(u'.');
    if (separator < 0)
        return std::nullopt;
    const auto part = [](QStringView text) -> std::optional<QString> {
        const auto bytes = decodedBase64(text.toUtf8());
        return bytes ? decodedUtf8(*bytes) : std::nullopt;
    };
    const auto team = part(QStringView(key).first(separator));
    auto signingIdentifier = part(QStringView(key).sliced(separator + 1));
    if (!team || !signingIdentifier || signingIdentifier->isEmpty())
        return std::nullopt;
    return CodeIdentity::make(std::move(*signingIdentifier), team);
}

bool isInterpreterName(const QString &signingIdentifier)
{
    static constexpr std::array<QStringView, 13> names{u"bash", u"dash", u"java", u"node", u"perl",
        u"php", u"python", u"python2", u"python3", u"ruby", u"sh", u"swift", u"zsh"};
    const QString lower = signingIdentifier.toLower();
    return std::ranges::find(names, QStringView(lower)) != names.end();
}

QList<CodeIdentity> withoutDuplicates(const QList<CodeIdentity> &identities)
{
    QList<CodeIdentity> result;
    result.reserve(identities.size());
    QSet<CodeIdentity> seen;
    for (const CodeIdentity &identity : identities) {
        if (seen.contains(identity))
            continue;
        seen.insert(identity);
        result.append(identity);
    }
    return result;
}

} // namespace zorvane::records
