#include "ui/shadow_images.h"

#include <algorithm>
#include <cmath>
#include <QPainter>
#include <QUrl>
#include <QUrlQuery>
#include <vector>

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

namespace
{

constexpr int largestSide = 512;

std::vector<double> bell(double sigma)
{
    const auto reach = std::max(1, static_cast<int>(std::ceil(3 * sigma)));
    std::vector<double> weights;
    double sum = 0;
    for (int at = -reach; at <= reach; ++at) {
        weights.push_back(std::exp(-at * at / (2 * sigma * sigma)));
        sum += weights.back();
    }
    for (auto &weight : weights)
        weight /= sum;
    return weights;
}

/** Blurs the rows of a square picture and turns it over its diagonal; twice blurs it whole. */
QImage blurredAndTurned(const QImage &image, const std::vector<double> &weights)
{
    const auto side = image.width();
    const auto reach = static_cast<int>(weights.size() / 2);
    const double *const middle = weights.data() + reach;
    QImage result(image.size(), QImage::Format_Alpha8);
    for (int y = 0; y < side; ++y) {
        const auto *line = image.constScanLine(y);
        for (int x = 0; x < side; ++x) {
            double sum = 0;
            for (int at = std::max(-reach, -x); at <= std::min(reach, side - 1 - x); ++at)
                sum += middle[at] * line[x + at];
            result.scanLine(x)[y] = static_cast<uchar>(std::lround(sum));
        }
    }
    return result;
}

} // namespace

ShadowImages::ShadowImages()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage ShadowImages::requestImage(const QString &id, QSize *size, const QSize &)
{
    const QUrlQuery query((QUrl(id)));
    const auto number = [&](const QString &name) { return query.queryItemValue(name).toDouble(); };
    const auto side = std::clamp(2 * static_cast<int>(number(u"corner"_s)) + 1, 1, largestSide);
    const auto margin = number(u"margin"_s);
    const auto radius = number(u"radius"_s);

    QImage box(side, side, QImage::Format_Alpha8);
    box.fill(Qt::transparent);
    {
        QPainter painter(&box);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        const auto inside = QRectF(0, 0, side, side).adjusted(margin, margin, -margin, -margin);
        painter.drawRoundedRect(inside, radius, radius);
    }
    const auto weights = bell(std::max(0.5, number(u"blur"_s) / 2));
    box = blurredAndTurned(blurredAndTurned(box, weights), weights);

    QImage shadow(box.size(), QImage::Format_ARGB32_Premultiplied);
    shadow.fill(Qt::black);
    QPainter painter(&shadow);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, box);
    painter.end();
    if (size != nullptr)
        *size = shadow.size();
    return shadow;
}

} // namespace zorvane::ui
