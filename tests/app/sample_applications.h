#pragma once

#include "app/records/blocked_application.h"

namespace zorvane::tests
{

/** A complete record of the present inspection. */
inline records::BlockedApplication sampleApplication(const QString &name,
    const QString &signingIdentifier, const std::optional<QString> &team = QStringLiteral("TEAM"))
{
    records::BlockedApplication application;
    application.id = QUuid::createUuidV5(QUuid(), name + u'/' + signingIdentifier);
    application.name = name;
    application.bundleIdentifier = signingIdentifier;
    application.signingIdentifier = signingIdentifier;
    application.teamIdentifier = team;
    application.auxiliaryCodeIdentities = QList<records::CodeIdentity>();
    application.inspectionVersion = records::currentInspectionVersion;
    application.path = QStringLiteral("/Applications/") + name + QStringLiteral(".app");
    return application;
}

} // namespace zorvane::tests
