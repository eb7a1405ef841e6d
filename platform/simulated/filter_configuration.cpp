#include "platform/simulated/filter_configuration.h"

#include <QJsonArray>

namespace zorvane::platform::simulated
{

namespace
{

using namespace Qt::StringLiterals;

const QString enabledKey = u"isEnabled"_s;
const QString descriptionKey = u"localizedDescription"_s;
const QString providerKey = u"providerConfiguration"_s;
const QString vendorKey = u"vendorConfiguration"_s;

} // namespace

FilterConfiguration::FilterConfiguration(QJsonObject object)
    : m_object(std::move(object))
{
}

bool FilterConfiguration::isEnabled() const
{
    return m_object.value(enabledKey).toBool(false);
}

void FilterConfiguration::setEnabled(bool enabled)
{
    m_object.insert(enabledKey, enabled);
}

void FilterConfiguration::setLocalizedDescription(const QString &description)
{
    m_object.insert(descriptionKey, description);
}

bool FilterConfiguration::hasProviderConfiguration() const
{
    return m_object.value(providerKey).isObject();
}

void FilterConfiguration::setProviderConfiguration(const FilterProviderConfiguration &configuration)
{
    QJsonObject vendor;
    for (const auto &[key, texts] : configuration.vendorConfiguration)
        vendor.insert(key, QJsonArray::fromStringList(texts));
    QJsonObject provider = m_object.value(providerKey).toObject();
    provider.insert(u"filterSockets"_s, configuration.filterSockets);
    provider.insert(
        u"filterDataProviderBundleIdentifier"_s, configuration.filterDataProviderBundleIdentifier);
    provider.insert(vendorKey, vendor);
    m_object.insert(providerKey, provider);
}

QStringList FilterConfiguration::vendorList(const QString &key) const
{
    const QJsonObject vendor = m_object.value(providerKey).toObject().value(vendorKey).toObject();
    QStringList texts;
    for (const auto text : vendor.value(key).toArray()) {
        if (text.isString())
            texts.append(text.toString());
    }
    return texts;
}

} // namespace zorvane::platform::simulated
