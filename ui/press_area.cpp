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
    followShape();
    Q_EMIT radiusChanged();
}

void PressArea::setFocusGap(qreal gap)
{
    if (m_focusGap == gap)
        return;
    m_focusGap = gap;
    followShape();
    Q_EMIT focusGapChanged();
}

void PressArea::setFocusInset(qreal inset)
{
    if (m_focusInset == inset)
        return;
    m_focusInset = inset;
    followShape();
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
    m_isTouched = event->deviceType() == QInputDevice::DeviceType::TouchScreen;
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
    letGo();
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
    letGo();
}

void PressArea::keyPressEvent(QKeyEvent *event)
{
    // With any other key held down it means something else.
    const auto meant = event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    switch (meant == Qt::NoModifier ? event->key() : Qt::Key_unknown) {
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

void PressArea::letGo()
{
    setKeepMouseGrab(false);
    // A finger that is lifted is nowhere, and no pointer's leaving tells of that.
    if (m_isTouched)
        setHoldsPointer(false);
    setHoldsButton(false);
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
            {{u"gap"_s, m_focusGap}, {u"inset"_s, m_focusInset}, {u"radius"_s, ringRadius()}});
    if (m_ring != nullptr)
        m_ring->setVisible(hasActiveFocus());
}

void PressArea::followShape()
{
    if (m_ring != nullptr) {
        m_ring->setProperty("gap", m_focusGap);
        m_ring->setProperty("inset", m_focusInset);
        m_ring->setProperty("radius", ringRadius());
    }
    if (m_face != nullptr) {
        m_face->setProperty("inset", m_focusInset);
        m_face->setProperty("radius", m_radius);
    }
}

} // namespace zorvane::ui
