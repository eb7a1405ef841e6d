#pragma once

#include <QColor>

/**
 * @file
 * Colours that are looked for in more than one place; of a light desktop, if their name does not
 * say otherwise.
 */
namespace zorvane::tests::colours
{

inline QColor faded(QColor colour, double opacity)
{
    colour.setAlphaF(float(opacity));
    return colour;
}

inline QColor black(double opacity)
{
    return faded(QColor(Qt::black), opacity);
}

inline QColor white(double opacity)
{
    return faded(QColor(Qt::white), opacity);
}

inline const QColor blue(0x007aff);
inline const QColor darkBlue(0x0a84ff);
inline const QColor blueSolid(0x0068e1);
inline const QColor orange(0xff9500);
inline const QColor darkOrange(0xff9f0a);
inline const QColor orangeText(0xa84e00);
inline const QColor red(0xff3b30);
inline const QColor darkRed(0xff453a);
inline const QColor redText(0xc8101e);
inline const QColor primary = black(0.86);
inline const QColor secondary = black(0.60);
inline const QColor quaternary = black(0.07);

} // namespace zorvane::tests::colours
