#include "ui/dashed_frame.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <QPainter>
#include <QPainterPath>

namespace zorvane::ui
{

namespace
{

constexpr double dash = 6;
constexpr double gap = 4.5;

/** The middle of the line, clockwise from where the top edge begins. */
QPainterPath outline(const QRectF &box, double radius)
{
    const auto across = 2 * radius;
    QPainterPath path;
    path.moveTo(box.left() + radius, box.top());
    path.arcTo(box.right() - across, box.top(), across, across, 90, -90);
    path.arcTo(box.right() - across, box.bottom() - across, across, across, 0, -90);
    path.arcTo(box.left(), box.bottom() - across, across, across, 270, -90);
    path.arcTo(box.left(), box.top(), across, across, 180, -90);
    return path;
}

double circumference(const QRectF &box, double radius)
{
    return 2 * (box.width() + box.height()) - (8 - 2 * std::numbers::pi) * radius;
}

} // namespace

DashedFrame::DashedFrame(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void DashedFrame::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void DashedFrame::setRadius(qreal radius)
{
    if (m_radius == radius)
        return;
    m_radius = radius;
    update();
    Q_EMIT radiusChanged();
}

void DashedFrame::setLineWidth(qreal width)
{
    if (m_lineWidth == width)
        return;
    m_lineWidth = width;
    update();
    Q_EMIT lineWidthChanged();
}

void DashedFrame::paint(QPainter *painter)
{
    const auto half = m_lineWidth / 2;
    const auto box = boundingRect().adjusted(half, half, -half, -half);
    const auto radius = std::max(0.0, m_radius - half);
    const auto length = circumference(box, radius);
    const auto stretch = length / ((dash + gap) * std::max(1.0, std::round(length / (dash + gap))));

    QPen pen(m_color, m_lineWidth, Qt::SolidLine, Qt::FlatCap);
    // The pattern is measured in widths of the pen.
    pen.setDashPattern({dash * stretch / m_lineWidth, gap * stretch / m_lineWidth});
    painter->setPen(pen);
    painter->drawPath(outline(box, radius));
}

} // namespace zorvane::ui
