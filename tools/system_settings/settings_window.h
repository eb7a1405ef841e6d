#pragma once

#include "tools/system_settings/system_state.h"
#include "tools/system_settings/traffic.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace zorvane::tools
{

/** The window of the system's settings, hidden until it is shown. Main thread. */
class SettingsWindow
{
public:
    explicit SettingsWindow(std::filesystem::path folder);

    /** Null if it could not be built, which the log explains. */
    [[nodiscard]] QQuickWindow *window() const;

private:
    SystemState m_state;
    Traffic m_traffic;
    QQmlApplicationEngine m_engine;
};

} // namespace zorvane::tools
