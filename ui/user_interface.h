#pragma once

#include "app/app_block_store.h"
#include "platform/platform.h"
#include "ui/blocked_apps_model.h"
#include "ui/desktop_conventions.h"
#include "ui/onboarding.h"
#include "ui/other_windows.h"
#include "ui/system_commands.h"

#include <memory>
#include <QObject>
#include <QQmlEngine>

class QQuickWindow;

namespace zorvane::ui
{

/**
 * The windows, over a store. Made after the application object and destroyed before it; what it is
 * given outlives it. Main thread.
 */
class UserInterface final : public QObject
{
public:
    UserInterface(app::AppBlockStore &store, platform::Platform &platform,
        const DesktopConventions &conventions = desktopConventions());
    ~UserInterface() override;

    /** The main window, hidden until show(). Null if it could not be built, which the log explains.
     */
    [[nodiscard]] QQuickWindow *window() const;
    [[nodiscard]] OtherWindows &otherWindows() { return m_otherWindows; }
    [[nodiscard]] Onboarding &onboarding() { return m_onboarding; }
    void show();
    /** Shows the main window in front of the others, also when it was closed or minimised. */
    void bringForward();

private:
    void load();
    void followVisibility(bool visible);
    void followState(Qt::ApplicationState state);

    app::AppBlockStore &m_store;
    const DesktopConventions m_conventions;
    bool m_isActive = false;
    BlockedAppsModel m_applications;
    SystemCommands m_system;
    Onboarding m_onboarding;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    OtherWindows m_otherWindows;
};

} // namespace zorvane::ui
