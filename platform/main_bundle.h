#pragma once

#include <filesystem>
#include <optional>
#include <QString>

namespace zorvane::platform
{

/** The bundle that the program runs from. Safe to use from any thread. */
class MainBundle
{
public:
    virtual ~MainBundle() = default;

    /** Nothing if the program runs outside a bundle or the bundle has no identifier. */
    [[nodiscard]] virtual std::optional<QString> identifier() const = 0;
    /** Where the bundle stands, as the system says it; links are not resolved. */
    [[nodiscard]] virtual std::filesystem::path location() const = 0;
    /** "CFBundleShortVersionString"; nothing if missing or no text. */
    [[nodiscard]] virtual std::optional<QString> shortVersion() const = 0;
    /** "CFBundleVersion"; nothing if missing or no text. */
    [[nodiscard]] virtual std::optional<QString> buildVersion() const = 0;
};

} // namespace zorvane::platform
