#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

namespace zorvane::ui
{

/** The text of a drawing among this module's resources, e.g. "symbols/xmark.svg"; empty if there is
 * none of that name. */
[[nodiscard]] QByteArray svgText(const QString &name);

/** Draws SVG text over the whole of a transparent picture of @p size pixels. */
[[nodiscard]] QImage drawSvg(const QByteArray &text, QSize size);

} // namespace zorvane::ui
