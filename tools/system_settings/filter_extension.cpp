#include "tools/system_settings/filter_extension.h"

#include "app/records/paths.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace zorvane::tools
{

using inspection::DiscoveredNetworkProcess;

namespace
{

bool isSameProcess(const DiscoveredNetworkProcess &a, const DiscoveredNetworkProcess &b)
{
    return inspection::ownIdentity(a) == inspection::ownIdentity(b)
        && inspection::sourceApplicationIdentity(a) == inspection::sourceApplicationIdentity(b)
        && a.executablePath == b.executablePath;
}

/** The first of the listed applications that @p path lies in. */
std::optional<QString> applicationAround(const QString &path, const QStringList &applications)
{
    const QString standardized = records::standardizedPath(path);
    const auto found = std::ranges::find_if(applications, [&](const QString &application) {
        return records::liesAtOrBelow(standardized, records::standardizedPath(application));
    });
    return found == applications.cend() ? std::nullopt : std::optional(*found);
}

} // namespace

Verdict verdict(const platform::simulated::FilterConfiguration &configuration,
    const DiscoveredNetworkProcess &process)
{
    if (!configuration.hasProviderConfiguration() || !configuration.isEnabled())
        return {false, u"Allowed: the filter is off."_s};
    const QStringList keys = configuration.vendorList(u"blockedCodeIdentities"_s);
    const QString own = records::identityKey(inspection::ownIdentity(process));
    if (keys.contains(own))
        return {true, u"Blocked by the identity "_s + own};
    if (const auto source = inspection::sourceApplicationIdentity(process)) {
        const QString key = records::identityKey(*source);
        if (keys.contains(key))
            return {true, u"Blocked by its source application’s identity "_s + key};
    }
    if (process.executablePath) {
        const auto application = applicationAround(
            *process.executablePath, configuration.vendorList(u"blockedApplicationPaths"_s));
        if (application)
            return {true, u"Blocked by the path "_s + *application};
    }
    return {false, u"Allowed: neither its identity nor its path is listed."_s};
}

QList<DiscoveredNetworkProcess> withConnection(
    QList<DiscoveredNetworkProcess> records, const DiscoveredNetworkProcess &process)
{
    const auto found = std::ranges::find_if(
        records, [&](const auto &record) { return isSameProcess(record, process); });
    if (found == records.end()) {
        records.append(process);
        return records;
    }
    found->lastSeenAt = std::max(found->lastSeenAt, process.lastSeenAt);
    if (found->connectionCount < std::numeric_limits<qint64>::max())
        ++found->connectionCount;
    return records;
}

} // namespace zorvane::tools
