#include "ui/documents.h"

#include <QQmlComponent>

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

QUrl documentAddress(const QString &document)
{
    return {u"qrc:/qt/qml/Zorvane/Ui/%1.qml"_s.arg(document)};
}

std::unique_ptr<QQuickWindow> buildWindow(
    QQmlEngine &engine, const QString &document, const QVariantMap &properties)
{
    QQmlComponent component(&engine, documentAddress(document));
    std::unique_ptr<QObject> object(component.createWithInitialProperties(properties));
    auto *const window = qobject_cast<QQuickWindow *>(object.get());
    if (window == nullptr) {
        qWarning("%s", qUtf8Printable(component.errorString()));
        return nullptr;
    }
    static_cast<void>(object.release());
    return std::unique_ptr<QQuickWindow>(window);
}

} // namespace zorvane::ui
