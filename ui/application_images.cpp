#include "ui/application_images.h"

#include "platform/png_image.h"
#include "ui/svg.h"
#include "ui/system_pictures.h"

#include <algorithm>
#include <QPainter>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

namespace
{

constexpr QSize defaultSize(64, 64);
/** Icons of records are small; a list from elsewhere may hold anything. */
constexpr unsigned largestSide = 1024;

QImage ownIcon(QSize size, qreal radius, qreal scale)
{
    auto picture = ownIconOfSystem(size);
    if (picture.isNull())
        picture = drawSvg(svgText(u"icons/appicon.svg"_s), size);
    QImage rounded(size, QImage::Format_ARGB32_Premultiplied);
    rounded.fill(Qt::transparent);
    QPainter painter(&rounded);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(picture));
    painter.drawRoundedRect(QRectF(QPointF(), size), radius * scale, radius * scale);
    return rounded;
}

/** Null if the bytes are no PNG image of a sensible size. */
QImage decoded(const QByteArray &bytes, QSize size)
{
    const auto image = platform::decodePng(bytes, largestSide);
    return image.isNull() ? image
                          : image.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace

ApplicationImages::ApplicationImages(const app::AppBlockStore &store)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_store(store)
{
}

QUrl ApplicationImages::address(const records::BlockedApplication &application)
{
    const auto revision = application.iconData ? qHash(*application.iconData) : 0;
    return {u"image://application/%1?%2"_s.arg(
        application.id.toString(QUuid::WithoutBraces), QString::number(revision, 16))};
}

QImage ApplicationImages::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const auto wanted = requestedSize.isValid() ? requestedSize : defaultSize;
    const QUrl url(id);
    QImage image;
    if (url.path() == u"own") {
        const QUrlQuery query(url);
        const auto points = query.queryItemValue(u"side"_s).toDouble();
        const auto scale = points > 0 ? wanted.width() / points : 1;
        image = ownIcon(wanted, query.queryItemValue(u"radius"_s).toDouble(), scale);
    } else {
        image = iconOf(url.path(), wanted);
    }
    if (size != nullptr)
        *size = image.size();
    return image;
}

QImage ApplicationImages::iconOf(const QString &id, QSize side) const
{
    const auto &applications = m_store.applications();
    const auto uuid = QUuid::fromString(id);
    const auto found = std::find_if(applications.cbegin(), applications.cend(),
        [&](const auto &application) { return application.id == uuid; });
    if (found != applications.cend() && found->iconData) {
        if (auto image = decoded(*found->iconData, side); !image.isNull())
            return image;
    }
    return drawSvg(svgText(u"icons/stand-in.svg"_s), side);
}

} // namespace zorvane::ui
