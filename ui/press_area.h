#pragma once

#include "ui/hover_area.h"

namespace zorvane::ui
{

/**
 * What can be pressed: by the pointer, by Space and Return, and by whoever calls press(). Never
 * takes the focus by a click, so whoever has it got it by the keyboard and shows its ring. The ring
 * and the face are built when they first show: a long list holds many such areas. (Its base is
 * named in full, as the tools that describe types to QML look for it by that name.)
 */
class PressArea : public zorvane::ui::HoverArea
{
    Q_OBJECT
    QML_ELEMENT
    /** The control's own state; a window disables all its controls behind an alert. */
    Q_PROPERTY(bool available READ isAvailable WRITE setAvailable NOTIFY availableChanged)
    Q_PROPERTY(bool pressed READ isPressed NOTIFY pressedChanged)
    /** Whether it is painted with the faint face that plain buttons have under the pointer. */
    Q_PROPERTY(bool lit READ isLit WRITE setLit NOTIFY litChanged)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)
    /** From the control to its ring. */
    Q_PROPERTY(qreal focusGap READ focusGap WRITE setFocusGap NOTIFY focusGapChanged)
    /** How much of the control, from its left, the ring and the face leave out. */
    Q_PROPERTY(qreal focusInset READ focusInset WRITE setFocusInset NOTIFY focusInsetChanged)

public:
    explicit PressArea(QQuickItem *parent = nullptr);

    [[nodiscard]] bool isAvailable() const { return m_available; }
    void setAvailable(bool available);
    [[nodiscard]] bool isPressed() const { return m_holdsButton && isHovered(); }
    [[nodiscard]] bool isLit() const { return m_lit; }
    void setLit(bool lit);
    [[nodiscard]] qreal radius() const { return m_radius; }
    void setRadius(qreal radius);
    [[nodiscard]] qreal focusGap() const { return m_focusGap; }
    void setFocusGap(qreal gap);
    [[nodiscard]] qreal focusInset() const { return m_focusInset; }
    void setFocusInset(qreal inset);

    /** Does nothing while disabled or hidden. */
    Q_INVOKABLE void press();

Q_SIGNALS:
    void clicked();
    void availableChanged();
    void pressedChanged();
    void litChanged();
    void radiusChanged();
    void focusGapChanged();
    void focusInsetChanged();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void keyPressEvent(QKeyEvent *event) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void letGo();
    void setHoldsButton(bool holds);
    void followPressed();
    void followFocus();
    void followShape();
    [[nodiscard]] qreal ringRadius() const { return m_radius + m_focusGap + 3; }

    QQuickItem *m_ring = nullptr;
    QQuickItem *m_face = nullptr;
    qreal m_radius = 6;
    qreal m_focusGap = 1;
    qreal m_focusInset = 0;
    bool m_available = true;
    bool m_lit = false;
    bool m_holdsButton = false;
    bool m_isTouched = false;
    bool m_wasPressed = false;
};

} // namespace zorvane::ui
