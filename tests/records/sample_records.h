#pragma once

#include "app/records/blocked_application.h"

/** Small records that the tests of this folder share. */
namespace zorvane::records::samples
{

inline CodeIdentity identity(const QString &signingIdentifier)
{
    return {signingIdentifier, std::nullopt};
}

inline CodeIdentity identity(const QString &signingIdentifier, const QString &team)
{
    return {signingIdentifier, team};
}

/** A record with the required fields alone. */
inline BlockedApplication application()
{
    BlockedApplication result;
    result.id = QUuid(QStringLiteral("{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}"));
    result.name = QStringLiteral("Tool");
    result.bundleIdentifier = QStringLiteral("com.example.tool");
    result.signingIdentifier = QStringLiteral("com.example.Tool");
    result.path = QStringLiteral("/Applications/Tool.app");
    return result;
}

/** A record in which no field is absent or empty. */
inline BlockedApplication fullApplication()
{
    BlockedApplication result = application();
    result.teamIdentifier = QStringLiteral("ABCDE12345");
    result.auxiliaryCodeIdentities
        = {identity(QStringLiteral("com.example.Tool.helper"), QStringLiteral("ABCDE12345")),
            identity(QStringLiteral("com.example.Tool.plain"))};
    result.auxiliarySigningIdentifiers = {QStringLiteral("com.example.Tool.older")};
    result.inspectionVersion = currentInspectionVersion;
    result.iconData = QByteArray("ABC\xFF");
    return result;
}

} // namespace zorvane::records::samples
