#pragma once

#include "platform/platform_error.h"

#include <functional>
#include <map>
#include <optional>
#include <QString>
#include <QStringList>

namespace zorvane::platform
{

/** The part of a filter's provider configuration that this program writes. */
struct FilterProviderConfiguration {
    bool filterSockets = false;
    QString filterDataProviderBundleIdentifier;
    /** What the filter extension is told, every value a list of texts. */
    std::map<QString, QStringList> vendorConfiguration;

    friend bool operator==(const FilterProviderConfiguration &, const FilterProviderConfiguration &)
        = default;
};

/**
 * The system's one filter configuration: a copy in this program, loaded from and saved to the
 * system's store. The copy is read and changed on the main thread, between a load's completion and
 * the save.
 */
class FilterManager
{
public:
    /** Called exactly once, on any thread, never before the call that it answers has returned; not
     * at all once the manager is gone. */
    using Completion = std::function<void(const std::optional<PlatformError> &error)>;

    virtual ~FilterManager() = default;

    /** Replaces the copy by what is stored; on an error the copy stays as it was. */
    virtual void load(Completion done) = 0;
    /** Stores the copy. Fails if the system, or the user, refuses. */
    virtual void save(Completion done) = 0;

    [[nodiscard]] virtual bool isEnabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;
    /**
     * Changes the copy's provider configuration, keeping settings that are not part of @p
     * configuration; makes one where there is none.
     */
    virtual void setProviderConfiguration(const FilterProviderConfiguration &configuration) = 0;
    virtual void setLocalizedDescription(const QString &description) = 0;
};

} // namespace zorvane::platform
