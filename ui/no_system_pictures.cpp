#include "ui/system_pictures.h"

namespace zorvane::ui
{

QImage ownIconOfSystem(QSize)
{
    return {};
}

QImage symbolOfSystem(const QString &, const QColor &, double, QSize)
{
    return {};
}

} // namespace zorvane::ui
