#pragma once

#include <memory>
#include <QQmlComponent>
#include <qqmlregistration.h>
#include <QQuickItem>
#include <QVariantMap>

namespace zorvane::ui
{

/**
 * Builds the item of one of the module's documents, e.g. "ToolTip", as a part of @p owner, which an
 * engine has made. The document is read at its first use. Null if it cannot be built.
 */
[[nodiscard]] QQuickItem *buildPart(
    QQuickItem &owner, const QString &document, const QVariantMap &properties);

/**
 * A place for one item that is built when it is wanted and destroyed when not; as large as that
 * item says. The item is that of a component, or that of a document, which is not even read before.
 * What QML's own Loader does, for components bound to their context, which that cannot build in
 * Qt 6.4.
 */
class Lazy : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(QQmlComponent *content READ content WRITE setContent NOTIFY contentChanged)
    /** The document's name, e.g. "ToolTip", in place of a component. */
    Q_PROPERTY(QString document MEMBER m_document)
    /** True for an item that stays, once inactive, until it has faded away. */
    Q_PROPERTY(bool lingers MEMBER m_lingers)
    /** What the document's item begins with. */
    Q_PROPERTY(QVariantMap properties MEMBER m_properties)
    Q_PROPERTY(QQuickItem *item READ item NOTIFY itemChanged)
    Q_CLASSINFO("DefaultProperty", "content")

public:
    explicit Lazy(QQuickItem *parent = nullptr);

    [[nodiscard]] bool isActive() const { return m_active; }
    void setActive(bool active);
    [[nodiscard]] QQmlComponent *content() const { return m_content; }
    /** Once, before the item is built. */
    void setContent(QQmlComponent *content);
    /** Null while inactive. */
    [[nodiscard]] QQuickItem *item() const { return m_item; }

Q_SIGNALS:
    void activeChanged();
    void contentChanged();
    void itemChanged();

protected:
    void componentComplete() override;

private:
    void follow();
    void build();
    void followSize();

    QQmlComponent *m_content = nullptr;
    QString m_document;
    QVariantMap m_properties;
    QQuickItem *m_item = nullptr;
    bool m_active = false;
    bool m_lingers = false;
    bool m_isBuilding = false;
};

} // namespace zorvane::ui
