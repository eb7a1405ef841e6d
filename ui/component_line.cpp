#include "ui/component_line.h"

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

namespace
{

using Component = inspection::ApplicationNetworkComponent;

QString symbolOf(Component::Kind kind)
{
    switch (kind) {
    case Component::Kind::Main:
        return u"app"_s;
    case Component::Kind::Bundled:
        return u"shippingbox"_s;
    case Component::Kind::Observed:
        return u"eye"_s;
    }
    return {};
}

} // namespace

QVariantList componentLines(const QList<Component> &components)
{
    QVariantList lines;
    lines.reserve(components.size());
    for (const Component &component : components) {
        lines.append(QVariant::fromValue(ComponentLine{
            component.name, inspection::label(component.kind), symbolOf(component.kind)}));
    }
    return lines;
}

} // namespace zorvane::ui
