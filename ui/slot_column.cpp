#include "ui/slot_column.h"

#include <cmath>

namespace zorvane::ui
{

namespace
{

/** How far from the visible part a slot is near, in points. */
constexpr qreal lookahead = 60;

} // namespace

void ColumnSlot::setIndex(int index)
{
    if (m_index == index)
        return;
    m_index = index;
    Q_EMIT indexChanged();
}

void ColumnSlot::setNear(bool near)
{
    if (m_near == near)
        return;
    m_near = near;
    Q_EMIT nearChanged();
}

void SlotColumn::setViewTop(qreal top)
{
    if (m_viewTop == top)
        return;
    m_viewTop = top;
    followView();
    Q_EMIT viewChanged();
}

void SlotColumn::setViewBottom(qreal bottom)
{
    if (m_viewBottom == bottom)
        return;
    m_viewBottom = bottom;
    followView();
    Q_EMIT viewChanged();
}

void SlotColumn::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change != ItemChildAddedChange && change != ItemChildRemovedChange)
        return;
    if (auto *const slot = qobject_cast<ColumnSlot *>(data.item); slot != nullptr) {
        if (change == ItemChildAddedChange) {
            connect(slot, &QQuickItem::heightChanged, this, &SlotColumn::placeSlots);
            connect(slot, &ColumnSlot::indexChanged, this, &SlotColumn::placeSlots);
        } else {
            disconnect(slot, nullptr, this, nullptr);
        }
        placeSlots();
    }
}

void SlotColumn::placeSlots()
{
    m_isPlaced = false;
    polish();
}

void SlotColumn::updatePolish()
{
    qreal bottom = 0;
    const auto children = childItems();
    for (auto *const child : children) {
        if (auto *const slot = qobject_cast<ColumnSlot *>(child); slot != nullptr) {
            slot->setY(bottom);
            bottom += slot->height();
        }
    }
    setImplicitHeight(bottom);
    m_isPlaced = true;
    m_viewHeight = m_viewBottom - m_viewTop;
    tellNearness();
}

/** Scrolling shows at once, to who goes on by the keyboard before the next frame. */
void SlotColumn::followView()
{
    // The edges are set one after the other; between that, nearly everything may seem in view.
    const bool bothHaveMoved = std::abs(m_viewBottom - m_viewTop - m_viewHeight) < 0.5;
    if (m_isPlaced && bothHaveMoved)
        tellNearness();
    else
        polish();
}

void SlotColumn::tellNearness()
{
    const qreal above = m_viewTop - lookahead;
    const qreal below = m_viewBottom + lookahead;
    const auto children = childItems();
    for (auto *const child : children) {
        if (auto *const slot = qobject_cast<ColumnSlot *>(child); slot != nullptr)
            slot->setNear(slot->y() + slot->height() > above && slot->y() < below);
    }
}

} // namespace zorvane::ui
