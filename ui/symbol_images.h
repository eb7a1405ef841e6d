#pragma once

#include <QQuickImageProvider>

namespace zorvane::ui
{

/**
 * The product's symbols for Image elements: image://symbol/<name>?color=#aarrggbb&stroke=<width on
 * the grid of 24>, the colour percent-encoded. Nothing for a name that does not exist.
 */
class SymbolImages final : public QQuickImageProvider
{
public:
    SymbolImages();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace zorvane::ui
