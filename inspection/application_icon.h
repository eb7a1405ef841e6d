#pragma once

#include <optional>
#include <QByteArray>
#include <QImage>

namespace zorvane::inspection
{

/** Width and height of a record's icon, in pixels. */
inline constexpr int iconSide = 128;

/**
 * @p image drawn smoothly over a whole square of iconSide pixels, as a PNG. Nothing for a null
 * image. Pure; any thread.
 */
[[nodiscard]] std::optional<QByteArray> encodedIcon(const QImage &image);

} // namespace zorvane::inspection
