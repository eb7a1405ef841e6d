#pragma once

#include <optional>
#include <QString>
#include <QUrl>

/**
 * @file
 * Where the vendor publishes: the only addresses that the program has to do with. Pure functions.
 */
namespace zorvane::updates
{

/** Where the manifest of the newest release is. */
[[nodiscard]] QUrl manifestAddress();

/**
 * The address that @p text is, if a download may be had from there: https on the vendor's host or
 * its www sub-domain. Nothing for every other text, and for every text that two programs might read
 * differently: no valid URL, a backslash, blank or control character anywhere, a percent sign or
 * anything but ASCII in front of the path.
 */
[[nodiscard]] std::optional<QUrl> allowedDownloadAddress(const QString &text);

} // namespace zorvane::updates
