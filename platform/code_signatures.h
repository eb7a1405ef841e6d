#pragma once

#include <filesystem>
#include <optional>
#include <QString>

namespace zorvane::platform
{

/** What a code signature says of itself; nothing of it is verified. */
struct SigningInformation {
    /** Absent for unsigned code and for signatures with a structural fault. */
    std::optional<QString> identifier;
    /** As it stands in the signature, untrimmed. */
    std::optional<QString> teamIdentifier;

    friend bool operator==(const SigningInformation &, const SigningInformation &) = default;
};

/** Reads code signatures. Safe to use from any thread, several at once; blocks on the disk. */
class CodeSignatures
{
public:
    virtual ~CodeSignatures() = default;

    /**
     * The signing information of the code at @p path: a bundle or a single file, where the main
     * executable of a bundle stands for that bundle. Nothing if there is no code at the path or it
     * cannot be read.
     */
    [[nodiscard]] virtual std::optional<SigningInformation> signingInformation(
        const std::filesystem::path &path) const = 0;
};

} // namespace zorvane::platform
