#pragma once

#include "app/records/blocked_application.h"

#include <optional>
#include <QByteArray>
#include <QJsonObject>
#include <QList>

/**
 * @file
 * The stored form of the records: JSON objects whose keys are the field names. Absent optional
 * fields are left out; unknown keys are ignored when reading.
 */
namespace zorvane::records
{

[[nodiscard]] QJsonObject toJson(const CodeIdentity &identity);
[[nodiscard]] QJsonObject toJson(const BlockedApplication &application);

/** The list as compact JSON, UTF-8. */
[[nodiscard]] QByteArray encodedApplications(const QList<BlockedApplication> &applications);

/**
 * Reads a list back. Nothing if the text is not a JSON array of complete records: one record that
 * lacks a required key or has a wrong type anywhere makes the whole list unreadable.
 */
[[nodiscard]] std::optional<QList<BlockedApplication>> decodedApplications(QByteArrayView text);

} // namespace zorvane::records
