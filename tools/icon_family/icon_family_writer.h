#pragma once

#include <QByteArray>
#include <QList>

/**
 * @file
 * Writes the container of icons in many sizes (".icns") that macOS shows an application by. Its
 * form is told where it is read: platform/simulated/icon_family.h. Pure; any thread.
 */
namespace zorvane::tools
{

/** The sides, in pixels, of the images that an application's icon consists of. */
[[nodiscard]] QList<int> iconFamilySides();

/**
 * The family of an icon that is drawn in @p svg, at 16, 32, 128, 256 and 512 points, each also for
 * screens of twice the resolution. Empty if @p svg is no SVG document.
 */
[[nodiscard]] QByteArray iconFamilyOf(const QByteArray &svg);

} // namespace zorvane::tools
