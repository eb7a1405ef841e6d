#pragma once

#include <QColor>
#include <QImage>
#include <QString>

/**
 * @file
 * Pictures that the system itself has for the windows; null images where it has none. Main thread.
 */
namespace zorvane::ui
{

/** The icon that the system shows for the running program, over the whole of @p size pixels. */
[[nodiscard]] QImage ownIconOfSystem(QSize size);

/** The system's symbol @p name in the middle of @p size pixels; @p stroke is its weight, as a width
 * on the grid of the product's own symbols. */
[[nodiscard]] QImage symbolOfSystem(
    const QString &name, const QColor &color, double stroke, QSize size);

} // namespace zorvane::ui
