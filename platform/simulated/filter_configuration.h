#pragma once

#include "platform/filter_manager.h"

#include <optional>
#include <QJsonObject>
#include <QStringList>

namespace zorvane::platform::simulated
{

/**
 * The form of "filter-configuration.json", which a filter extension would read:
 * {"localizedDescription", "isEnabled", "providerConfiguration": {"filterSockets",
 * "filterDataProviderBundleIdentifier", "vendorConfiguration": {…}}}. A value type over that
 * object; members that are not named here are kept.
 */
class FilterConfiguration
{
public:
    FilterConfiguration() = default;
    explicit FilterConfiguration(QJsonObject object);

    [[nodiscard]] const QJsonObject &object() const { return m_object; }

    [[nodiscard]] bool isEnabled() const;
    void setEnabled(bool enabled);
    void setLocalizedDescription(const QString &description);

    [[nodiscard]] bool hasProviderConfiguration() const;
    /** Replaces the vendor configuration whole, keeps other members of an existing provider. */
    void setProviderConfiguration(const FilterProviderConfiguration &configuration);
    /** The texts in the list @p key of the vendor configuration; none if there is no such list. */
    [[nodiscard]] QStringList vendorList(const QString &key) const;

    friend bool operator==(const FilterConfiguration &, const FilterConfiguration &) = default;

private:
    QJsonObject m_object;
};

} // namespace zorvane::platform::simulated
