#include "ui/svg.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

QByteArray svgText(const QString &name)
{
    QFile file(u":/qt/qml/Zorvane/Ui/"_s + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage drawSvg(const QByteArray &text, QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(text).render(&painter, QRectF(QPointF(), size));
    return image;
}

} // namespace zorvane::ui
