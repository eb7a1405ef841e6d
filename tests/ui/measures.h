#pragma once

#include "ui/colours.h"
#include "ui/window_fixture.h"

#include <algorithm>
#include <QEasingCurve>
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

inline Find symbol(const QString &name, int number = 0)
{
    return [=](const WindowFixture &window) {
        return window
            .items([&](const QQuickItem *item) {
                return item->property("box").isValid() && item->property("name") == name;
            })
            .value(number);
    };
}

/** The one of this number among those of a name that show. */
inline Find numbered(const QString &name, int number)
{
    return [=](const WindowFixture &window) {
        return window.items([&](const QQuickItem *item) { return item->objectName() == name; })
            .value(number);
    };
}

/** The place of a row, with all that is unfolded in it. */
inline Find place(int number)
{
    return [=](const WindowFixture &window) {
        return window
            .items([](const QQuickItem *item) {
                return item->property("isShowingComponents").isValid();
            })
            .value(number);
    };
}

/** The part of an item that has this name, whether it shows or not. */
inline Find partOf(const Find &find, const QString &name)
{
    return [=](const WindowFixture &window) -> QQuickItem * {
        const auto *const item = find(window);
        const auto parts = item == nullptr ? QList<QQuickItem *>() : item->childItems();
        const auto found = std::ranges::find(parts, name, &QObject::objectName);
        return found == parts.cend() ? nullptr : *found;
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

/** It is not there, or does not show. */
inline Measure gone(const QString &what, const Find &find)
{
    return {what, [=](const WindowFixture &window) { return find(window) == nullptr ? 0 : 1; }, 0};
}

using Distance = double (*)(const QRectF &first, const QRectF &second);

inline Measure between(
    const QString &what, const Find &first, const Find &second, Distance distance, double expected)
{
    return {what,
        [=](const WindowFixture &window) -> QVariant {
            const auto place = [&](const Find &find) {
                const auto *const item = find(window);
                return item == nullptr ? QRectF() : inWindow(item);
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

inline double beside(const QRectF &outer, const QRectF &inner)
{
    return inner.center().x() - outer.center().x();
}

inline double besideVertically(const QRectF &outer, const QRectF &inner)
{
    return inner.center().y() - outer.center().y();
}

inline Measures box(const QString &what, const Find &find, double width, double height)
{
    return {of(what, find, "width", width), of(what, find, "height", height)};
}

/** How far apart the letters of a size are set; a font keeps whole 64ths of that. */
inline double tracking(int size)
{
    const auto stated = size > 13 ? -0.2 : size == 13 ? -0.08 : size == 10 ? 0.08 : 0;
    return int(stated * 64) / 64.0;
}

inline Measures font(const QString &what, const Find &find, int size, QFont::Weight weight)
{
    return {of(what, find, "font.pixelSize", size), of(what, find, "font.weight", int(weight)),
        of(what, find, "font.letterSpacing", tracking(size))};
}

/** What moves a property of an item when it changes; null if nothing does. */
inline const QObject *animationOf(const QQuickItem *item, const QString &property)
{
    const auto children = item == nullptr ? QObjectList() : item->children();
    for (auto *const child : children) {
        const auto target = child->property("targetProperty").value<QQmlProperty>();
        if (target.name() != property)
            continue;
        // It is made at the first change otherwise.
        qmlExecuteDeferred(child);
        return child->property("animation").value<QObject *>();
    }
    return nullptr;
}

/** How long a change of a property takes, in milliseconds, and by which curve. */
inline Measures motion(
    const Find &find, const QString &property, int duration, QEasingCurve::Type curve)
{
    const auto read = [=](const auto &what) {
        return [=](const WindowFixture &window) -> QVariant {
            const auto *const animation = animationOf(find(window), property);
            return animation == nullptr ? QVariant() : what(*animation);
        };
    };
    return {{u"%1: duration"_s.arg(property),
                read([](const QObject &animation) { return animation.property("duration"); }),
                duration},
        {u"%1: curve"_s.arg(property), read([](const QObject &animation) {
             return QVariant(int(animation.property("easing").value<QEasingCurve>().type()));
         }),
            int(curve)}};
}

/** The measures that are not as they are to be, in words. */
inline QStringList wrongMeasures(const WindowFixture &window, const Measures &measures)
{
    const auto same = [](const QVariant &read, const QVariant &expected) {
        if (expected.metaType() == QMetaType::fromType<QColor>())
            return read.isValid() && read.value<QColor>().rgba() == expected.value<QColor>().rgba();
        if (expected.metaType() == QMetaType::fromType<QString>())
            return read == expected;
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
