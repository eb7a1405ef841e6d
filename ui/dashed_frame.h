#pragma once

#include <array>
#include <QColor>
#include <QPainterPath>
#include <qqmlregistration.h>
#include <QQuickItem>

namespace zorvane::ui
{

/**
 * A dashed line around a rounded box, inside its bounds. The dashes are about 6 on and 4.5 off,
 * fitted so that they meet without a seam.
 *
 * Painted as four strips along the edges: one picture of the whole box would be nearly all empty,
 * and a megabyte of the window's memory.
 */
class DashedFrame : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(qreal lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)

public:
    explicit DashedFrame(QQuickItem *parent = nullptr);

    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor &color);
    [[nodiscard]] qreal radius() const { return m_radius; }
    void setRadius(qreal radius);
    [[nodiscard]] qreal lineWidth() const { return m_lineWidth; }
    void setLineWidth(qreal width);

Q_SIGNALS:
    void colorChanged();
    void radiusChanged();
    void lineWidthChanged();

protected:
    void geometryChange(const QRectF &now, const QRectF &before) override;

private:
    class Strip;

    void layOut();
    void repaint();

    std::array<Strip *, 4> m_strips;
    QPainterPath m_dashes;
    QColor m_color = Qt::black;
    qreal m_radius = 0;
    qreal m_lineWidth = 1;
};

} // namespace zorvane::ui
