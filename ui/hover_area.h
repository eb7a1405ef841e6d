#pragma once

#include <qqmlregistration.h>
#include <QQuickItem>

namespace zorvane::ui
{

/** Where the pointer is noticed. What it rests on is explained by a tool tip, if there is one. */
class HoverArea : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** Empty for no tool tip. */
    Q_PROPERTY(QString toolTip READ toolTip WRITE setToolTip NOTIFY toolTipChanged)
    Q_PROPERTY(bool hovered READ isHovered NOTIFY hoveredChanged)

public:
    explicit HoverArea(QQuickItem *parent = nullptr);

    [[nodiscard]] QString toolTip() const { return m_toolTip; }
    void setToolTip(const QString &text);
    [[nodiscard]] bool isHovered() const { return m_holdsPointer; }

Q_SIGNALS:
    void toolTipChanged();
    void hoveredChanged();

protected:
    void setHoldsPointer(bool holds);
    /** Nothing is explained while @p silent. */
    void setSilent(bool silent);
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void followToolTip();

    QString m_toolTip;
    QQuickItem *m_shownTip = nullptr;
    bool m_holdsPointer = false;
    bool m_silent = false;
};

} // namespace zorvane::ui
