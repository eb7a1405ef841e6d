#include "ui/face_images.h"

#include <QPainter>
#include <QPainterPath>
#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

namespace
{

constexpr QSize defaultSize(64, 29);

/** How one kind of button looks in one appearance; an invisible edge has no width. */
struct Face {
    QColor top;
    QColor bottom;
    QColor edge;
    /** The edge lies over the fill, or around it. */
    bool edgeInside = true;
    QColor shade;
    QColor hovered;
    QColor pressed;
};

QColor black(double opacity)
{
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(opacity));
}

QColor white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

Face prominentFace(bool dark)
{
    if (dark)
        return {QColor(0x126fe2), QColor(0x0a6be0), white(0.12), true, black(0.22), black(0.07),
            black(0.15)};
    return {QColor(0x1873e8), QColor(0x0068e1), Qt::transparent, true, QColor(0, 53, 125, 46),
        black(0.07), black(0.16)};
}

Face borderedFace(bool dark)
{
    if (dark)
        return {QColor(0x626266), QColor(0x58585c), white(0.12), true, black(0.22), white(0.06),
            white(0.08)};
    return {QColor(0xffffff), QColor(0xfcfcfc), black(0.14), false, black(0.12), black(0.03),
        black(0.09)};
}

void fill(QPainter &painter, const QRectF &box, double radius, const QBrush &brush)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawRoundedRect(box, radius, radius);
}

void drawFace(QPainter &painter, const Face &face, const QRectF &box, double radius, QColor veil)
{
    QPainterPath shade;
    shade.addRoundedRect(box.translated(0, 1), radius, radius);
    QPainterPath body;
    body.addRoundedRect(box, radius, radius);
    painter.fillPath(shade.subtracted(body), face.shade);

    const auto inset = face.edgeInside ? 0.0 : 0.5;
    const auto inside = box.adjusted(inset, inset, -inset, -inset);
    if (!face.edgeInside)
        fill(painter, box, radius, face.edge);
    QLinearGradient gradient(box.topLeft(), box.bottomLeft());
    gradient.setColorAt(0, face.top);
    gradient.setColorAt(1, face.bottom);
    fill(painter, inside, radius - inset, gradient);
    if (veil.alpha() > 0)
        fill(painter, inside, radius - inset, veil);
    if (face.edgeInside && face.edge.alpha() > 0) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(face.edge, 0.5));
        painter.drawRoundedRect(
            box.adjusted(0.25, 0.25, -0.25, -0.25), radius - 0.25, radius - 0.25);
    }
}

} // namespace

FaceImages::FaceImages()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage FaceImages::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QUrl url(id);
    const QUrlQuery query(url);
    const auto dark = query.queryItemValue(u"dark"_s) == u"1";
    const auto face = url.path() == u"prominent" ? prominentFace(dark) : borderedFace(dark);
    const auto state = query.queryItemValue(u"state"_s);
    const auto veil = state == u"pressed" ? face.pressed
        : state == u"hovered"             ? face.hovered
                                          : QColor(Qt::transparent);

    QImage image(
        requestedSize.isValid() ? requestedSize : defaultSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const auto height = query.queryItemValue(u"height"_s).toDouble();
    const auto scale = height > 0 ? image.height() / (height + 1) : 1;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    drawFace(painter, face, QRectF(0, 0, image.width() / scale, height),
        query.queryItemValue(u"radius"_s).toDouble(), veil);
    painter.end();
    if (size != nullptr)
        *size = image.size();
    return image;
}

} // namespace zorvane::ui
