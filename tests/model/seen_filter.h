#pragma once

#include "fakes/fake_filter.h"
#include "filter/filter_controller.h"
#include "model/expected_filter.h"

#include <QMetaEnum>

/** @file What is to be seen of a filter controller, in the words of its model. */
namespace zorvane::tests
{

inline QString nameOf(const filter::FilterStatus &status)
{
    return QString::fromLatin1(
        QMetaEnum::fromType<filter::FilterStatus::Kind>().valueToKey(int(status.kind())));
}

inline QString described(const filter::FilterStatus &status)
{
    return nameOf(status) + u'(' + status.message() + u')';
}

inline ExpectedFilter::Configuration storedConfiguration(const FakeFilterManager &manager)
{
    const auto &configuration = manager.stored;
    ExpectedFilter::Configuration result;
    result.enabled = configuration.enabled;
    if (!configuration.provider)
        return result;
    const auto &vendor = configuration.provider->vendorConfiguration;
    result.written = configuration.localizedDescription == QStringLiteral("Zorvane")
        && configuration.provider->filterSockets
        && vendor.at(QStringLiteral("blockedSigningIdentifiers")).isEmpty();
    result.rules = {vendor.at(QStringLiteral("blockedCodeIdentities")),
        vendor.at(QStringLiteral("blockedApplicationPaths"))};
    result.extension = configuration.provider->filterDataProviderBundleIdentifier;
    return result;
}

} // namespace zorvane::tests
