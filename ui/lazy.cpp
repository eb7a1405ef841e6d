#include "ui/lazy.h"

#include <QQmlContext>
#include <QQmlEngine>

namespace zorvane::ui
{

Lazy::Lazy(QQuickItem *parent)
    : QQuickItem(parent)
{
}

void Lazy::setActive(bool active)
{
    if (m_active == active)
        return;
    m_active = active;
    follow();
    Q_EMIT activeChanged();
}

void Lazy::setContent(QQmlComponent *content)
{
    if (m_content == content)
        return;
    m_content = content;
    follow();
    Q_EMIT contentChanged();
}

void Lazy::componentComplete()
{
    QQuickItem::componentComplete();
    follow();
}

void Lazy::follow()
{
    if (!isComponentComplete() || m_content == nullptr || m_active == (m_item != nullptr))
        return;
    if (m_active) {
        build();
    } else {
        // It may be one of its own handlers that leads here.
        m_item->setParentItem(nullptr);
        m_item->deleteLater();
        m_item = nullptr;
    }
    followSize();
    Q_EMIT itemChanged();
}

void Lazy::build()
{
    auto *const object = m_content->beginCreate(m_content->creationContext());
    m_item = qobject_cast<QQuickItem *>(object);
    if (m_item == nullptr) {
        qWarning("%s", qUtf8Printable(m_content->errorString()));
        delete object;
        return;
    }
    m_item->setParent(this);
    m_item->setParentItem(this);
    m_content->completeCreate();
    connect(m_item, &QQuickItem::widthChanged, this, &Lazy::followSize);
    connect(m_item, &QQuickItem::heightChanged, this, &Lazy::followSize);
}

void Lazy::followSize()
{
    setImplicitSize(
        m_item == nullptr ? 0 : m_item->width(), m_item == nullptr ? 0 : m_item->height());
}

} // namespace zorvane::ui
