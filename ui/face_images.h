#pragma once

#include <QQuickImageProvider>

namespace zorvane::ui
{

/**
 * The faces of push buttons, for Image elements:
 * image://face/<prominent|bordered>?height=H&radius=R&dark=<0|1>&state=<normal|hovered|pressed>,
 * with a line of shade one point below the button. H and R in points.
 */
class FaceImages final : public QQuickImageProvider
{
public:
    FaceImages();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace zorvane::ui
