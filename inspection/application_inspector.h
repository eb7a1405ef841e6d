#pragma once

#include "app/records/blocked_application.h"
#include "platform/bundles.h"
#include "platform/code_signatures.h"
#include "platform/directory_walk.h"
#include "platform/icons.h"

#include <filesystem>
#include <optional>
#include <QString>
#include <QUrl>
#include <QUuid>
#include <variant>

namespace zorvane::inspection
{

/** Why a bundle cannot be put on the list. */
enum class ApplicationInspectionError { NotAnApplication, MissingIdentifier, UnsignedApplication };

/** The text that the user is shown for @p error. */
[[nodiscard]] QString describe(ApplicationInspectionError error);

using InspectionResult = std::variant<records::BlockedApplication, ApplicationInspectionError>;

/**
 * Turns an application bundle into a complete record: names, identities of everything signed that
 * the bundle can start, and its icon. Holds no state; safe to use from any thread, several
 * inspections at once. Blocks on the disk, noticeably for large bundles.
 */
class ApplicationInspector
{
public:
    /** The services that an inspection reads through; all outlive the inspector. */
    struct Services {
        const platform::Bundles &bundles;
        const platform::CodeSignatures &signatures;
        const platform::DirectoryWalk &walk;
        const platform::Icons &icons;
    };

    explicit ApplicationInspector(const Services &services);

    /** Inspects the bundle at the file URL @p url; the record gets @p id. Nothing is written
     * anywhere. */
    [[nodiscard]] InspectionResult inspectApplication(const QUrl &url, const QUuid &id) const;

    /** The signing identity of a bundle or a single file, its team trimmed; nothing if it has none.
     */
    [[nodiscard]] std::optional<records::CodeIdentity> readCodeIdentity(
        const std::filesystem::path &path) const;

    /**
     * The identities of the helpers inside a bundle: nested bundles, and executables in the helper
     * folders. Sorted, without repetitions and without @p mainIdentity. @p bundle has no trailing
     * slash.
     */
    [[nodiscard]] QList<records::CodeIdentity> discoverAuxiliaryIdentities(
        const std::filesystem::path &bundle, const records::CodeIdentity &mainIdentity) const;

    /** The desktop's icon for @p path as a PNG of 128 by 128 pixels; nothing if there is none. */
    [[nodiscard]] std::optional<QByteArray> makeIconData(const std::filesystem::path &path) const;

private:
    Services m_services;
};

} // namespace zorvane::inspection
