#pragma once

#include <optional>
#include <QStringList>

namespace zorvane::platform
{

/** What the running program is entitled to. Safe to use from any thread. */
class Entitlements
{
public:
    virtual ~Entitlements() = default;

    /** "com.apple.security.application-groups"; nothing if missing or no list of texts. */
    [[nodiscard]] virtual std::optional<QStringList> applicationGroups() const = 0;
};

} // namespace zorvane::platform
