#include "ui/lazy.h"

#include "ui/documents.h"

#include <QQmlContext>
#include <QQmlEngine>

namespace zorvane::ui
{

namespace
{

/** The component's item within @p owner; null if it cannot be built. */
QQuickItem *built(QQmlComponent &component, QQuickItem &owner, QQmlContext *context,
    const QVariantMap &properties)
{
    auto *const object = component.beginCreate(context);
    auto *const item = qobject_cast<QQuickItem *>(object);
    if (item == nullptr) {
        qWarning("%s", qUtf8Printable(component.errorString()));
        delete object;
        return nullptr;
    }
    component.setInitialProperties(item, properties);
    item->setParent(&owner);
    item->setParentItem(&owner);
    component.completeCreate();
    return item;
}

} // namespace

QQuickItem *buildPart(QQuickItem &owner, const QString &document, const QVariantMap &properties)
{
    auto *const context = qmlContext(&owner);
    QQmlComponent component(context->engine(), documentAddress(document));
    return built(component, owner, context, properties);
}

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
    const bool knowsWhat = m_content != nullptr || !m_document.isEmpty();
    const bool wanted = m_active || (m_lingers && m_item != nullptr && m_item->opacity() > 0);
    if (m_isBuilding || !isComponentComplete() || !knowsWhat || wanted == (m_item != nullptr))
        return;
    if (wanted) {
        build();
    } else {
        // It may be one of its own handlers that leads here.
        m_item->setParentItem(nullptr);
        m_item->deleteLater();
        m_item = nullptr;
    }
    followSize();
    Q_EMIT itemChanged();
    // It may have been the item itself that wanted to go, while it was built.
    if (!m_active)
        follow();
}

void Lazy::build()
{
    m_isBuilding = true;
    m_item = m_content != nullptr ? built(*m_content, *this, m_content->creationContext(), {})
                                  : buildPart(*this, m_document, m_properties);
    m_isBuilding = false;
    if (m_item == nullptr)
        return;
    connect(m_item, &QQuickItem::widthChanged, this, &Lazy::followSize);
    connect(m_item, &QQuickItem::heightChanged, this, &Lazy::followSize);
    connect(m_item, &QQuickItem::opacityChanged, this, &Lazy::follow);
}

void Lazy::followSize()
{
    setImplicitSize(
        m_item == nullptr ? 0 : m_item->width(), m_item == nullptr ? 0 : m_item->height());
}

} // namespace zorvane::ui
