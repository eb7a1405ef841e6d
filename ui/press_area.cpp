#include "ui/press_area.h"

#include "ui/lazy.h"

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

PressArea::PressArea(QQuickItem *parent)
    : HoverArea(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setActiveFocusOnTab(true);
    connect(this, &HoverArea::hoveredChanged, this, &PressArea::followPressed);
}

void PressArea::setAvailable(bool available)
{
    if (m_available == available)
        return;
    m_available = available;
    setEnabled(available);
    Q_EMIT availableChanged();
}

void PressArea::setLit(bool lit)
{
    if (m_lit == lit)
        return;
    m_lit = lit;
    if (m_lit && m_face == nullptr)
        m_face = buildPart(*this, u"PlainFace"_s,
            {{u"inset"_s, m_focusInset}, {u"radius"_s, m_radius}, {u"pressed"_s, isPressed()}});
    if (m_face != nullptr)
        m_face->setProperty("lit", m_lit);
    Q_EMIT litChanged();
}

void PressArea::setRadius(qreal radius)
{
    if (m_radius == radius)
        return;
    m_radius = radius;
    Q_EMIT radiusChanged();
}

void PressArea::setFocusGap(qreal gap)
{
    if (m_focusGap == gap)
        return;
    m_focusGap = gap;
    Q_EMIT focusGapChanged();
}

void PressArea::setFocusInset(qreal inset)
{
    if (m_focusInset == inset)
        return;
    m_focusInset = inset;
    for (auto *const part : {m_ring, m_face}) {
        if (part != nullptr)
            part->setProperty("inset", inset);
    }
    Q_EMIT focusInsetChanged();
}

void PressArea::press()
{
    if (isEnabled() && isVisible())
        Q_EMIT clicked();
}

void PressArea::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    setKeepMouseGrab(true);
    setHoldsPointer(true);
    setHoldsButton(true);
}

void PressArea::mouseMoveEvent(QMouseEvent *event)
{
    setHoldsPointer(contains(event->position()));
}

void PressArea::mouseReleaseEvent(QMouseEvent *event)
{
    const bool inside = m_holdsButton && contains(event->position());
    setKeepMouseGrab(false);
    setHoldsButton(false);
    if (inside)
        press();
}

/** The second press of two has come as a press already. */
void PressArea::mouseDoubleClickEvent(QMouseEvent *event)
{
    event->accept();
}

void PressArea::mouseUngrabEvent()
{
    setKeepMouseGrab(false);
    setHoldsButton(false);
}

void PressArea::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // A key that is held down presses once.
        if (!event->isAutoRepeat())
            press();
        break;
    default:
        event->ignore();
    }
}

void PressArea::itemChange(ItemChange change, const ItemChangeData &data)
{
    HoverArea::itemChange(change, data);
    if (change == ItemActiveFocusHasChanged)
        followFocus();
}

void PressArea::setHoldsButton(bool holds)
{
    m_holdsButton = holds;
    setSilent(holds);
    followPressed();
}

void PressArea::followPressed()
{
    if (m_wasPressed == isPressed())
        return;
    m_wasPressed = isPressed();
    if (m_face != nullptr)
        m_face->setProperty("pressed", m_wasPressed);
    Q_EMIT pressedChanged();
}

void PressArea::followFocus()
{
    if (hasActiveFocus() && m_ring == nullptr)
        m_ring = buildPart(*this, u"FocusRing"_s,
            {{u"gap"_s, m_focusGap}, {u"inset"_s, m_focusInset},
                {u"radius"_s, m_radius + m_focusGap + 3}});
    if (m_ring != nullptr)
        m_ring->setVisible(hasActiveFocus());
}

} // namespace zorvane::ui
