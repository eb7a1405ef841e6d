#pragma once

#include <QQuickImageProvider>

namespace zorvane::ui
{

/**
 * Soft shadows, for BorderImage elements:
 * image://shadow/box?blur=B&radius=R&margin=M&corner=C is the black shadow, at full strength, of a
 * box with rounded corners that begins M from the picture's edge; the picture can be stretched
 * beyond C from each edge. Lengths in points.
 */
class ShadowImages final : public QQuickImageProvider
{
public:
    ShadowImages();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace zorvane::ui
