#include "ui/symbol_images.h"

#include "ui/svg.h"
#include "ui/system_pictures.h"

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

QImage ownSymbol(const QString &name, const QColor &color, const QString &stroke, QSize size)
{
    auto text = svgText(u"symbols/%1.svg"_s.arg(name));
    if (text.isEmpty()) {
        qWarning("No symbol is named %s", qUtf8Printable(name));
        return {};
    }
    text.replace("currentColor", color.name(QColor::HexRgb).toUtf8());
    text.replace("stroke-width=\"1.75\"", "stroke-width=\"" + stroke.toUtf8() + '"');
    auto image = drawSvg(text, size);
    if (color.alpha() < 255)
        fade(image, color.alpha());
    return image;
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
    const QColor color(query.queryItemValue(u"color"_s, QUrl::FullyDecoded));
    const auto stroke = query.queryItemValue(u"stroke"_s);
    const auto wanted = requestedSize.isValid() ? requestedSize : grid;
    auto image = symbolOfSystem(url.path(), color, stroke.toDouble(), wanted);
    if (image.isNull())
        image = ownSymbol(url.path(), color, stroke, wanted);
    if (size != nullptr)
        *size = image.size();
    return image;
}

} // namespace zorvane::ui
