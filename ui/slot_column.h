#pragma once

#include <qqmlregistration.h>
#include <QQuickItem>

namespace zorvane::ui
{

/** One place in a SlotColumn. */
class ColumnSlot : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** Its place in the column: the model's row. */
    Q_PROPERTY(int index READ index WRITE setIndex NOTIFY indexChanged)
    Q_PROPERTY(bool near READ isNear NOTIFY nearChanged)

public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] int index() const { return m_index; }
    void setIndex(int index);
    /** In view, or nearly. False until the column has placed it. */
    [[nodiscard]] bool isNear() const { return m_near; }
    void setNear(bool near);

Q_SIGNALS:
    void indexChanged();
    void nearChanged();

private:
    int m_index = -1;
    bool m_near = false;
};

/**
 * Stacks its slots without gaps, before each frame, and tells each whether it is near the visible
 * part: what a long list shows need not exist elsewhere.
 */
class SlotColumn : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** The part of the column that is in view, in its own coordinates. */
    Q_PROPERTY(qreal viewTop READ viewTop WRITE setViewTop NOTIFY viewChanged REQUIRED)
    Q_PROPERTY(qreal viewBottom READ viewBottom WRITE setViewBottom NOTIFY viewChanged REQUIRED)

public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] qreal viewTop() const { return m_viewTop; }
    void setViewTop(qreal top);
    [[nodiscard]] qreal viewBottom() const { return m_viewBottom; }
    void setViewBottom(qreal bottom);

Q_SIGNALS:
    void viewChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void updatePolish() override;

private:
    void placeSlots();
    void followView();
    void tellNearness();

    qreal m_viewTop = 0;
    qreal m_viewBottom = 0;
    qreal m_viewHeight = 0;
    bool m_isPlaced = false;
};

} // namespace zorvane::ui
