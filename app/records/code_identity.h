#pragma once

#include <optional>
#include <QHashFunctions>
#include <QList>
#include <QString>

namespace zorvane::records
{

/**
 * One code-signing identity: the signing identifier of a piece of code and the team that signed it.
 * A plain value; equality takes both fields as they stand, an absent team equalling only an absent
 * one. Decoding takes texts as they are, so a team may hold blanks; make() trims.
 */
struct CodeIdentity {
    /** The code signature's identifier, exactly as read. For an application usually its bundle
     * identifier. */
    QString signingIdentifier;
    /** The signing team; absent for ad-hoc code and code without a team. */
    std::optional<QString> teamIdentifier;

    /** An identity whose team is trimmed, and absent where nothing is left of it. */
    [[nodiscard]] static CodeIdentity make(
        QString signingIdentifier, const std::optional<QString> &teamIdentifier);

    friend bool operator==(const CodeIdentity &, const CodeIdentity &) = default;
};

[[nodiscard]] size_t qHash(const CodeIdentity &identity, size_t seed = 0) noexcept;

/**
 * The order of every sorted list of identities: by signing identifier, then by team, both by code
 * point, an absent team counting as the empty text.
 */
[[nodiscard]] bool precedes(const CodeIdentity &a, const CodeIdentity &b);

/**
 * The text that the content filter matches a process against: base64 of the team's UTF-8 bytes
 * (nothing when absent), ".", base64 of the signing identifier's UTF-8 bytes.
 */
[[nodiscard]] QString identityKey(const CodeIdentity &identity);

/**
 * Reads an identity key back: both parts strict base64 of valid UTF-8, the team trimmed. Nothing if
 * the text is not such a key or its signing identifier is empty.
 */
[[nodiscard]] std::optional<CodeIdentity> identityFromKey(const QString &key);

/**
 * True if @p signingIdentifier, in lower case, is the name of a script interpreter. Blocking one
 * would block every script that it runs, so these are never used as blocking identities.
 */
[[nodiscard]] bool isInterpreterName(const QString &signingIdentifier);

/** @p identities without repetitions, the first of equal ones kept, in their order. */
[[nodiscard]] QList<CodeIdentity> withoutDuplicates(const QList<CodeIdentity> &identities);

} // namespace zorvane::records
