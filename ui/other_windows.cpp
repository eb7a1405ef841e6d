#include "ui/other_windows.h"

#include "ui/documents.h"

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
        window = buildWindow(m_engine, type, {{u"store"_s, QVariant::fromValue(&m_store)}});
    if (window)
        bringForward(*window);
}

} // namespace zorvane::ui
