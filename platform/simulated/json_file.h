#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <QJsonObject>
#include <QString>

/**
 * @file
 * Files of the state folder that hold one JSON object. Safe to use from any thread, and beside
 * other programs that use the same files; blocks on the disk.
 */
namespace zorvane::platform::simulated
{

/** The object in the file at @p path; nothing if there is none, or a damaged one, which is
 * reported. */
[[nodiscard]] std::optional<QJsonObject> readJsonFile(const std::filesystem::path &path);

/**
 * Reads the object in the file at @p path (an empty one where there is none), has @p change change
 * it, and stores it, excluding other programs meanwhile. A damaged file is kept aside under another
 * name. Returns what went wrong, if anything did; then the file is as it was.
 */
[[nodiscard]] std::optional<QString> changeJsonFile(
    const std::filesystem::path &path, const std::function<void(QJsonObject &object)> &change);

} // namespace zorvane::platform::simulated
