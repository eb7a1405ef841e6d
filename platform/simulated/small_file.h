#pragma once

#include <filesystem>
#include <optional>
#include <QByteArray>

namespace zorvane::platform::simulated
{

/**
 * All bytes of the regular file at @p path, links followed. Nothing if it cannot be read, is longer
 * than @p limit bytes, or is a pipe, a device or a folder; never waits for a writer. Any thread.
 */
[[nodiscard]] std::optional<QByteArray> readSmallFile(
    const std::filesystem::path &path, qint64 limit);

} // namespace zorvane::platform::simulated
