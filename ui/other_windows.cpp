#include "ui/other_windows.h"

#include <QQmlComponent>

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

void bringForward(QWindow &window)
{
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.requestActivate();
}

OtherWindows::OtherWindows(QQmlEngine &engine, app::AppBlockStore &store)
    : m_engine(engine)
    , m_store(store)
{
}

OtherWindows::~OtherWindows() = default;

void OtherWindows::close()
{
    for (const auto *window : {&m_settings, &m_about}) {
        if (*window)
            (*window)->close();
    }
}

bool OtherWindows::isAnyVisible() const
{
    return (m_settings && m_settings->isVisible()) || (m_about && m_about->isVisible());
}

void OtherWindows::show(Window &window, const QString &type)
{
    if (!window)
        window = build(type);
    if (window)
        bringForward(*window);
}

OtherWindows::Window OtherWindows::build(const QString &type) const
{
    QQmlComponent component(&m_engine, QUrl(u"qrc:/qt/qml/Zorvane/Ui/%1.qml"_s.arg(type)));
    std::unique_ptr<QObject> object(
        component.createWithInitialProperties({{u"store"_s, QVariant::fromValue(&m_store)}}));
    auto *const window = qobject_cast<QQuickWindow *>(object.get());
    if (window == nullptr) {
        qWarning("%s", qUtf8Printable(component.errorString()));
        return nullptr;
    }
    static_cast<void>(object.release());
    return Window(window);
}

} // namespace zorvane::ui
