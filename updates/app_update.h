#pragma once

#include <optional>
#include <QByteArray>
#include <QMetaType>
#include <QObject>
#include <QString>

namespace zorvane::updates
{

/** A published release, as the vendor's manifest describes it. A plain value. */
struct AppUpdate {
    Q_GADGET
    Q_PROPERTY(QString version MEMBER version)
    Q_PROPERTY(QString announcement READ announcement)

public:
    /** The marketing version; ordered by compareNumerically(). */
    QString version;
    /** Tells releases of one version apart. */
    std::optional<qint64> build;
    /** Where the release is to be had, to the letter; not necessarily an allowed address. */
    QString downloadURL;
    std::optional<QString> releaseNotes;

    /** The release notes, or a sentence that stands for them. */
    [[nodiscard]] QString announcement() const;

    friend bool operator==(const AppUpdate &, const AppUpdate &) = default;
};

/** The manifest as compact JSON; absent fields are left out. */
[[nodiscard]] QByteArray encodedUpdate(const AppUpdate &update);

/**
 * Reads a manifest, a JSON object of the field names. Nothing if a required key is missing, a value
 * has a wrong type, or the download address is no URL at all; unknown keys are ignored.
 */
[[nodiscard]] std::optional<AppUpdate> decodedUpdate(QByteArrayView text);

} // namespace zorvane::updates
