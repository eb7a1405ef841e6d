#include "ui/dashed_frame.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <QPainter>
#include <QQuickPaintedItem>

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

/** The dashes as areas: a painter that strokes by itself shifts them where it clips. */
QPainterPath dashes(const QRectF &bounds, double cornerRadius, double lineWidth)
{
    const auto half = lineWidth / 2;
    const auto box = bounds.adjusted(half, half, -half, -half);
    const auto radius = std::max(0.0, cornerRadius - half);
    const auto length = circumference(box, radius);
    const auto stretch = length / ((dash + gap) * std::max(1.0, std::round(length / (dash + gap))));

    QPainterPathStroker stroker;
    stroker.setWidth(lineWidth);
    stroker.setCapStyle(Qt::FlatCap);
    // The pattern is measured in widths of the line.
    stroker.setDashPattern({dash * stretch / lineWidth, gap * stretch / lineWidth});
    return stroker.createStroke(outline(box, radius));
}

} // namespace

/** The part of the frame that lies in this item's bounds. */
class DashedFrame::Strip final : public QQuickPaintedItem
{
public:
    explicit Strip(DashedFrame *frame)
        : QQuickPaintedItem(frame)
        , m_frame(frame)
    {
        setAntialiasing(true);
    }

    void paint(QPainter *painter) override
    {
        painter->translate(-position());
        painter->fillPath(m_frame->m_dashes, m_frame->m_color);
    }

private:
    DashedFrame *m_frame;
};

DashedFrame::DashedFrame(QQuickItem *parent)
    : QQuickItem(parent)
    , m_strips{new Strip(this), new Strip(this), new Strip(this), new Strip(this)}
{
}

void DashedFrame::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    repaint();
    Q_EMIT colorChanged();
}

void DashedFrame::setRadius(qreal radius)
{
    if (m_radius == radius)
        return;
    m_radius = radius;
    layOut();
    Q_EMIT radiusChanged();
}

void DashedFrame::setLineWidth(qreal width)
{
    if (m_lineWidth == width)
        return;
    m_lineWidth = width;
    layOut();
    Q_EMIT lineWidthChanged();
}

void DashedFrame::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    layOut();
}

/** Above and below as high as the corners; beside, as wide as the line. */
void DashedFrame::layOut()
{
    const auto thickness = std::ceil(m_lineWidth);
    const auto corner
        = std::min(std::ceil(std::max(m_radius, thickness)), std::floor(height() / 2));
    const auto between = height() - 2 * corner;
    const std::array places{QRectF(0, 0, width(), corner),
        QRectF(0, height() - corner, width(), corner), QRectF(0, corner, thickness, between),
        QRectF(width() - thickness, corner, thickness, between)};
    for (std::size_t at = 0; at < m_strips.size(); ++at) {
        m_strips[at]->setPosition(places[at].topLeft());
        m_strips[at]->setSize(places[at].size());
    }
    m_dashes = dashes(boundingRect(), m_radius, m_lineWidth);
    repaint();
}

void DashedFrame::repaint()
{
    for (auto *const strip : m_strips)
        strip->update();
}

} // namespace zorvane::ui
