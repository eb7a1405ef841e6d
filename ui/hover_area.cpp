#include "ui/hover_area.h"

#include "ui/lazy.h"

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

HoverArea::HoverArea(QQuickItem *parent)
    : QQuickItem(parent)
{
    setAcceptHoverEvents(true);
}

void HoverArea::setToolTip(const QString &text)
{
    if (m_toolTip == text)
        return;
    m_toolTip = text;
    if (m_shownTip != nullptr)
        m_shownTip->setProperty("text", text);
    followToolTip();
    Q_EMIT toolTipChanged();
}

void HoverArea::setHoldsPointer(bool holds)
{
    if (m_holdsPointer == holds)
        return;
    m_holdsPointer = holds;
    followToolTip();
    Q_EMIT hoveredChanged();
}

void HoverArea::setSilent(bool silent)
{
    m_silent = silent;
    followToolTip();
}

void HoverArea::hoverEnterEvent(QHoverEvent *event)
{
    event->accept();
    setHoldsPointer(true);
}

/** An area that was disabled meanwhile learns only by this that the pointer is still there. */
void HoverArea::hoverMoveEvent(QHoverEvent *event)
{
    event->accept();
    setHoldsPointer(true);
}

void HoverArea::hoverLeaveEvent(QHoverEvent *event)
{
    event->accept();
    setHoldsPointer(false);
}

void HoverArea::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if ((change == ItemVisibleHasChanged || change == ItemEnabledHasChanged) && !data.boolValue)
        setHoldsPointer(false);
}

void HoverArea::followToolTip()
{
    const bool wanted = isHovered() && !m_silent && !m_toolTip.isEmpty();
    if (wanted == (m_shownTip != nullptr))
        return;
    if (wanted) {
        m_shownTip = buildPart(*this, u"ToolTip"_s,
            {{u"text"_s, m_toolTip}, {u"target"_s, QVariant::fromValue<QQuickItem *>(this)}});
    } else {
        m_shownTip->setParentItem(nullptr);
        m_shownTip->deleteLater();
        m_shownTip = nullptr;
    }
}

} // namespace zorvane::ui
