#pragma once

#include "ui/appearance.h"
#include "ui/measures.h"
#include "ui/window_states.h"

#include <QTest>

/**
 * @file
 * A table of measures: each row is a state of the windows, and what is to be measured there.
 */
namespace zorvane::tests
{

using Make = std::function<states::Window()>;
/** The measures of a window, in light or in dark. */
using ByAppearance = std::function<Measures(bool dark)>;

/** Begins a table; rows follow by addMeasures(). */
inline void beginMeasures()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<ByAppearance>("measures");
    QTest::addColumn<QList<bool>>("appearances");
}

/** A row whose measures are looked at in light and in dark. */
inline void addMeasures(const QString &row, const Make &make, const ByAppearance &measures)
{
    QTest::newRow(qUtf8Printable(row)) << make << measures << QList<bool>{false, true};
}

/** A row whose measures have nothing to do with that. */
inline void addMeasures(const QString &row, const Make &make, const Measures &measures)
{
    const ByAppearance always = [=](bool /*dark*/) { return measures; };
    QTest::newRow(qUtf8Printable(row)) << make << always << QList<bool>{false};
}

/** That the window of the current row has its measures. */
inline void keepMeasures()
{
    QFETCH(Make, make);
    QFETCH(ByAppearance, measures);
    QFETCH(QList<bool>, appearances);
    QStringList wrong;
    for (const bool dark : appearances) {
        const Appearance appearance(dark);
        const auto window = make();
        QTRY_COMPARE(window->window()->color(), Appearance::window(dark));
        for (const auto &each : wrongMeasures(*window, measures(dark)))
            wrong << (dark ? u"dark: "_s : u"light: "_s) + each;
    }
    QVERIFY2(wrong.isEmpty(), qUtf8Printable(wrong.join(u'\n')));
}

} // namespace zorvane::tests
