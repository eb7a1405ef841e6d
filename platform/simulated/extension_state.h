#pragma once

#include <filesystem>
#include <optional>
#include <QString>

namespace zorvane::platform::simulated
{

/** What the system remembers of the extension, in "extension.json": {"approved", "active"}. */
struct ExtensionState {
    /** The user allowed it. */
    bool approved = false;
    /** It has been activated. */
    bool active = false;

    friend bool operator==(const ExtensionState &, const ExtensionState &) = default;
};

/** The state in @p file; neither, if there is none or a damaged one, which is reported. */
[[nodiscard]] ExtensionState readExtensionState(const std::filesystem::path &file);

/** Stores the state in @p file. Returns what went wrong, if anything did. */
[[nodiscard]] std::optional<QString> writeExtensionState(
    const std::filesystem::path &file, const ExtensionState &state);

} // namespace zorvane::platform::simulated
