#pragma once

#include "inspection/network_components.h"

#include <QObject>
#include <qqmlregistration.h>
#include <QString>
#include <QVariantList>

namespace zorvane::ui
{

/** One network component as a line of text with a symbol. */
struct ComponentLine {
    Q_GADGET
    QML_VALUE_TYPE(componentLine)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString kind MEMBER kind)
    Q_PROPERTY(QString symbol MEMBER symbol)

public:
    QString name;
    /** The label that the user is shown. */
    QString kind;
    QString symbol;
};

/** The lines of @p components, in their order. */
[[nodiscard]] QVariantList componentLines(
    const QList<inspection::ApplicationNetworkComponent> &components);

} // namespace zorvane::ui
