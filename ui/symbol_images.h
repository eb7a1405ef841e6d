#pragma once

#include <QQuickImageProvider>

namespace zorvane::ui
{

/**
 * Symbols for Image elements, the system's of that name or else the product's own:
 * image://symbol/<name>?color=#aarrggbb&stroke=<width on the grid of 24>, the colour
 * percent-encoded. Nothing for a name that does not exist.
 */
class SymbolImages final : public QQuickImageProvider
{
public:
    SymbolImages();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace zorvane::ui
