#include "filter/error_classification.h"

#include "app/records/collation.h"

using namespace Qt::StringLiterals;

namespace zorvane::filter
{

namespace
{

constexpr qint64 filterPermissionDenied = 5;
constexpr qint64 configurationPermissionDenied = 10;
constexpr qint64 extensionAuthorizationRequired = 13;

} // namespace

bool isFilterPermissionError(const platform::PlatformError &error)
{
    if (error.domain == "NEFilterErrorDomain"_L1 && error.code == filterPermissionDenied)
        return true;
    if (error.domain == "NEConfigurationErrorDomain"_L1
        && error.code == configurationPermissionDenied)
        return true;
    return records::containsIgnoringCase(error.description, u"permission denied"_s);
}

bool isAwaitingApprovalError(const platform::PlatformError &error)
{
    return isFilterPermissionError(error)
        || (error.domain == "OSSystemExtensionErrorDomain"_L1
            && error.code == extensionAuthorizationRequired);
}

} // namespace zorvane::filter
