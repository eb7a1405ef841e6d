#pragma once

#include "app/app_block_store.h"

#include <QQuickImageProvider>
#include <QUrl>

namespace zorvane::ui
{

/**
 * The icons of applications for Image elements: image://application/own?radius=R is the running
 * program's, image://application/<id>?<revision> a blocked application's, or the stand-in where
 * that has none that can be read. Main thread: no asynchronous images.
 */
class ApplicationImages final : public QQuickImageProvider
{
public:
    /** @p store outlives the engine that owns this. */
    explicit ApplicationImages(const app::AppBlockStore &store);

    /** Where the icon is found; differs for a different icon. */
    [[nodiscard]] static QUrl address(const records::BlockedApplication &application);

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

private:
    [[nodiscard]] QImage iconOf(const QString &id, QSize side) const;

    const app::AppBlockStore &m_store;
};

} // namespace zorvane::ui
