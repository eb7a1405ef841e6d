#include "ui/slot_column.h"

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
    polish();
    Q_EMIT viewChanged();
}

void SlotColumn::setViewBottom(qreal bottom)
{
    if (m_viewBottom == bottom)
        return;
    m_viewBottom = bottom;
    polish();
    Q_EMIT viewChanged();
}

void SlotColumn::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change != ItemChildAddedChange && change != ItemChildRemovedChange)
        return;
    if (auto *const slot = qobject_cast<ColumnSlot *>(data.item); slot != nullptr) {
        if (change == ItemChildAddedChange) {
            connect(slot, &QQuickItem::heightChanged, this, &SlotColumn::polish);
            connect(slot, &ColumnSlot::indexChanged, this, &SlotColumn::polish);
        } else {
            disconnect(slot, nullptr, this, nullptr);
        }
        polish();
    }
}

void SlotColumn::updatePolish()
{
    qreal bottom = 0;
    const auto children = childItems();
    for (auto *const child : children) {
        auto *const slot = qobject_cast<ColumnSlot *>(child);
        if (slot == nullptr)
            continue;
        slot->setY(bottom);
        bottom += slot->height();
        slot->setNear(bottom > m_viewTop - lookahead && slot->y() < m_viewBottom + lookahead);
    }
    setImplicitHeight(bottom);
}

} // namespace zorvane::ui
