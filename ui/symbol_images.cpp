#include "ui/symbol_images.h"

#include "ui/svg.h"

#include <QColor>
#include <QPainter>
#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

namespace
{

constexpr QSize grid(24, 24);

/** The whole symbol at once: its parts overlap, and must not show through each other. */
void fade(QImage &image, int alpha)
{
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(image.rect(), QColor(0, 0, 0, alpha));
}

} // namespace

SymbolImages::SymbolImages()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage SymbolImages::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QUrl url(id);
    const QUrlQuery query(url);
    auto text = svgText(u"symbols/%1.svg"_s.arg(url.path()));
    if (text.isEmpty()) {
        qWarning("No symbol is named %s", qUtf8Printable(url.path()));
        return {};
    }
    const QColor color(query.queryItemValue(u"color"_s, QUrl::FullyDecoded));
    text.replace("currentColor", color.name(QColor::HexRgb).toUtf8());
    text.replace("stroke-width=\"1.75\"",
        "stroke-width=\"" + query.queryItemValue(u"stroke"_s).toUtf8() + '"');
    auto image = drawSvg(text, requestedSize.isValid() ? requestedSize : grid);
    if (color.alpha() < 255)
        fade(image, color.alpha());
    if (size != nullptr)
        *size = image.size();
    return image;
}

} // namespace zorvane::ui
