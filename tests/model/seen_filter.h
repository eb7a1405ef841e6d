#pragma once

#include "filter/controller_fixture.h"
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

inline ExpectedFilter::Configuration storedConfiguration(const ControllerFixture &real)
{
    const auto &configuration = real.manager.stored;
    ExpectedFilter::Configuration result;
    result.enabled = configuration.enabled;
    if (!configuration.provider)
        return result;
    result.written = configuration.localizedDescription == QStringLiteral("Zorvane")
        && configuration.provider->filterSockets
        && real.vendorList(QStringLiteral("blockedSigningIdentifiers")).isEmpty();
    result.rules = {real.storedKeys(), real.storedPaths()};
    result.extension = configuration.provider->filterDataProviderBundleIdentifier;
    return result;
}

} // namespace zorvane::tests
