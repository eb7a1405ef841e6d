#pragma once

#include "platform/platform_error.h"

#include <array>

namespace zorvane::tests
{

/** An error of the system, and what it means by the rules. */
struct KnownError {
    platform::PlatformError error;
    /** The permission may still be on its way. */
    bool isPermission = false;
    /** The user has to approve something. */
    bool isApproval = false;
    /** Says that the program stands in the wrong place. */
    bool namesApplications = false;
};

/** One of every class. */
inline const std::array knownErrors{
    KnownError{{QStringLiteral("NEFilterErrorDomain"), 5, QStringLiteral("not yet")}, true, true},
    KnownError{
        {QStringLiteral("NEConfigurationErrorDomain"), 10, QStringLiteral("later")}, true, true},
    KnownError{{QStringLiteral("NSPOSIXErrorDomain"), 1,
                   QStringLiteral("Operation failed: PERMISSION DENIED by policy")},
        true, true},
    KnownError{
        {QStringLiteral("OSSystemExtensionErrorDomain"), 13, QStringLiteral("ask")}, false, true},
    KnownError{{QStringLiteral("OSSystemExtensionErrorDomain"), 8, QStringLiteral("signature")}},
    KnownError{{QStringLiteral("OSSystemExtensionErrorDomain"), 3,
                   QStringLiteral("It has to be in /applications.")},
        false, false, true},
    KnownError{{QStringLiteral("NEFilterErrorDomain"), 3, QStringLiteral("stale")}},
    KnownError{{QStringLiteral("NSCocoaErrorDomain"), 640, QStringLiteral("The disk is full.")}},
    KnownError{{QStringLiteral("NSCocoaErrorDomain"), 4, QString()}},
};

inline const KnownError &knownError(int number)
{
    return knownErrors.at(size_t(number) % knownErrors.size());
}

} // namespace zorvane::tests
