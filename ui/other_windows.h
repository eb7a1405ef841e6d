#pragma once

#include "app/app_block_store.h"

#include <memory>
#include <QObject>
#include <QQmlEngine>
#include <qqmlregistration.h>
#include <QQuickWindow>

namespace zorvane::ui
{

/** Shows a window in front of the others, also if it was closed or minimised. */
void bringForward(QWindow &window);

/**
 * The windows beside the main one: the settings and what there is to say about the program. There
 * is one of each, built when it is first asked for. Main thread; what it is given outlives it.
 */
class OtherWindows final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    OtherWindows(QQmlEngine &engine, app::AppBlockStore &store);
    ~OtherWindows() override;

    Q_INVOKABLE void showSettings() { show(m_settings, QStringLiteral("SettingsWindow")); }
    Q_INVOKABLE void showAbout() { show(m_about, QStringLiteral("AboutWindow")); }
    void close();

    /** Null before they were shown. */
    [[nodiscard]] QQuickWindow *settings() const { return m_settings.get(); }
    [[nodiscard]] QQuickWindow *about() const { return m_about.get(); }
    [[nodiscard]] bool isAnyVisible() const;

private:
    using Window = std::unique_ptr<QQuickWindow>;

    void show(Window &window, const QString &type);

    QQmlEngine &m_engine;
    app::AppBlockStore &m_store;
    Window m_settings;
    Window m_about;
};

} // namespace zorvane::ui
