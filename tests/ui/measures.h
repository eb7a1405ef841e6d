#pragma once

#include "ui/window_fixture.h"

#include <QColor>
#include <QFont>
#include <QQmlProperty>

/**
 * @file
 * What is measured at the running windows: how an item is found, which of its properties or which
 * distance is read, and what it is to be.
 */
namespace zorvane::tests
{

using namespace Qt::StringLiterals;

using Find = std::function<QQuickItem *(const WindowFixture &)>;
using Read = std::function<QVariant(const WindowFixture &)>;

struct Measure {
    QString what;
    Read read;
    QVariant expected;
};

using Measures = QList<Measure>;

// What is looked at.

inline Find named(const QString &name)
{
    return [=](const WindowFixture &window) { return window.item(name); };
}

inline Find text(const QString &shown)
{
    return [=](const WindowFixture &window) { return window.text(shown); };
}

inline Find button(const QString &label)
{
    return [=](const WindowFixture &window) { return window.button(label); };
}

inline Find symbol(const QString &name)
{
    return [=](const WindowFixture &window) {
        return window
            .items([&](const QQuickItem *item) {
                return item->property("box").isValid() && item->property("name") == name;
            })
            .value(0);
    };
}

/** What a place in the column shows. */
inline Find shownBy(const QString &place)
{
    return [=](const WindowFixture &window) -> QQuickItem * {
        const auto *const item = window.item(place);
        return item == nullptr ? nullptr : item->childItems().first()->childItems().value(0);
    };
}

inline Find parentOf(const Find &find)
{
    return [=](const WindowFixture &window) -> QQuickItem * {
        const auto *const item = find(window);
        return item == nullptr ? nullptr : item->parentItem();
    };
}

inline Find childOf(const Find &find, int number)
{
    return [=](const WindowFixture &window) -> QQuickItem * {
        const auto *const item = find(window);
        return item == nullptr ? nullptr : item->childItems().value(number);
    };
}

// What is read of it; nothing if it is not there.

inline Measure of(
    const QString &what, const Find &find, const char *property, const QVariant &expected)
{
    return {u"%1: %2"_s.arg(what, QLatin1StringView(property)),
        [=](const WindowFixture &window) -> QVariant {
            auto *const item = find(window);
            return item == nullptr ? QVariant()
                                   : QQmlProperty::read(item, QLatin1StringView(property));
        },
        expected};
}

using Distance = double (*)(const QRectF &first, const QRectF &second);

inline Measure between(
    const QString &what, const Find &first, const Find &second, Distance distance, double expected)
{
    return {what,
        [=](const WindowFixture &window) -> QVariant {
            const auto place = [&](const Find &find) {
                const auto *const item = find(window);
                return item == nullptr ? QRectF()
                                       : item->mapRectToScene(QRectF(QPointF(), item->size()));
            };
            if (place(first).isEmpty() || place(second).isEmpty())
                return {};
            return distance(place(first), place(second));
        },
        expected};
}

inline double gapBelow(const QRectF &upper, const QRectF &lower)
{
    return lower.top() - upper.bottom();
}

inline double gapRight(const QRectF &left, const QRectF &right)
{
    return right.left() - left.right();
}

inline double insetLeft(const QRectF &outer, const QRectF &inner)
{
    return inner.left() - outer.left();
}

inline double insetRight(const QRectF &outer, const QRectF &inner)
{
    return outer.right() - inner.right();
}

inline double insetTop(const QRectF &outer, const QRectF &inner)
{
    return inner.top() - outer.top();
}

inline double insetBottom(const QRectF &outer, const QRectF &inner)
{
    return outer.bottom() - inner.bottom();
}

inline Measures box(const QString &what, const Find &find, double width, double height)
{
    return {of(what, find, "width", width), of(what, find, "height", height)};
}

inline Measures font(const QString &what, const Find &find, int size, QFont::Weight weight)
{
    return {of(what, find, "font.pixelSize", size), of(what, find, "font.weight", int(weight))};
}

/** How long a change of a property takes, in milliseconds. */
inline Measure duration(const Find &find, const QString &property, int expected)
{
    return {u"%1: duration"_s.arg(property),
        [=](const WindowFixture &window) -> QVariant {
            const auto *const item = find(window);
            const auto children = item == nullptr ? QObjectList() : item->children();
            for (auto *const child : children) {
                const auto target = child->property("targetProperty").value<QQmlProperty>();
                if (target.name() != property)
                    continue;
                // It is made at the first change otherwise.
                qmlExecuteDeferred(child);
                const auto *const animation = child->property("animation").value<QObject *>();
                return animation == nullptr ? QVariant() : animation->property("duration");
            }
            return {};
        },
        expected};
}

/** The measures that are not as they are to be, in words. */
inline QStringList wrongMeasures(const WindowFixture &window, const Measures &measures)
{
    const auto same = [](const QVariant &read, const QVariant &expected) {
        if (expected.metaType() == QMetaType::fromType<QColor>())
            return read.isValid() && read.value<QColor>().rgba() == expected.value<QColor>().rgba();
        return read.isValid() && qAbs(read.toDouble() - expected.toDouble()) < 0.001;
    };
    const auto told = [](const QVariant &value) {
        return value.metaType() == QMetaType::fromType<QColor>()
            ? value.value<QColor>().name(QColor::HexArgb)
            : value.toString();
    };
    QStringList wrong;
    for (const auto &[what, read, expected] : measures) {
        const auto value = read(window);
        if (!same(value, expected))
            wrong << u"%1 is \"%2\" and not %3"_s.arg(what, told(value), told(expected));
    }
    return wrong;
}

} // namespace zorvane::tests
