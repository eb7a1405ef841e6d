#pragma once

#include <memory>
#include <QQuickWindow>
#include <QString>
#include <QUrl>
#include <QVariantMap>

class QQmlEngine;

/**
 * @file
 * The documents of this module by their names, e.g. "SettingsWindow". Main thread.
 */
namespace zorvane::ui
{

[[nodiscard]] QUrl documentAddress(const QString &document);

/** The window of @p document, which begins with @p properties. Null if it cannot be built, which
 * the log explains. */
[[nodiscard]] std::unique_ptr<QQuickWindow> buildWindow(
    QQmlEngine &engine, const QString &document, const QVariantMap &properties);

} // namespace zorvane::ui
