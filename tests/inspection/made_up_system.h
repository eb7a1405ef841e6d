#pragma once

#include "fakes/fake_services.h"
#include "inspection/application_inspector.h"

#include <QUrl>
#include <QUuid>

/** @file Inspections of applications that exist only by being listed. */
namespace zorvane::tests
{

inline const QString team = QStringLiteral("ABCDE12345");
inline const QUuid someId(QStringLiteral("{11111111-2222-3333-4444-555555555555}"));

/** The record that an inspection made; nothing if it failed. */
inline std::optional<records::BlockedApplication> recordOf(
    const inspection::InspectionResult &result)
{
    const auto *record = std::get_if<records::BlockedApplication>(&result);
    return record ? std::optional(*record) : std::nullopt;
}

/** How an inspection failed; nothing if it did not. */
inline std::optional<inspection::ApplicationInspectionError> errorOf(
    const inspection::InspectionResult &result)
{
    const auto *error = std::get_if<inspection::ApplicationInspectionError>(&result);
    return error ? std::optional(*error) : std::nullopt;
}

/** A system with an inspector. */
struct MadeUpSystem {
    void addBundle(const QString &path, const QVariantMap &information)
    {
        bundles.information.insert(path, information);
    }

    void sign(const QString &path, const QString &identifier,
        const std::optional<QString> &signingTeam = std::nullopt)
    {
        signatures.signatures.insert(path, {identifier, signingTeam});
    }

    /** A bundle with an identifier and a signature at @p path. */
    void addApplication(const QString &path, const QVariantMap &more = {})
    {
        QVariantMap information{
            {QStringLiteral("CFBundleIdentifier"), QStringLiteral("com.example.Tool")}};
        information.insert(more);
        addBundle(path, information);
        sign(path, QStringLiteral("com.example.Tool"), team);
    }

    /** A signed folder at @p path. */
    void addNested(const std::string &path, const QString &identifier,
        const std::optional<QString> &signingTeam = std::nullopt)
    {
        walk.items.emplace_back(path, platform::ItemKind::Directory);
        sign(QString::fromStdString(path), identifier, signingTeam);
    }

    [[nodiscard]] inspection::ApplicationInspector inspector() const
    {
        return inspection::ApplicationInspector({bundles, signatures, walk, icons});
    }

    [[nodiscard]] inspection::InspectionResult inspect(const QString &path) const
    {
        return inspector().inspectApplication(QUrl::fromLocalFile(path), someId);
    }

    FakeBundles bundles;
    FakeSignatures signatures;
    FakeWalk walk;
    FakeIcons icons;
};

} // namespace zorvane::tests
