#pragma once

#include "ui/appearance.h"
#include "ui/measures.h"
#include "ui/window_states.h"

#include <QTest>

/**
 * @file
 * Tables of measures: each row is a state of the windows, and what is to be measured there.
 */
namespace zorvane::tests
{

using Make = std::function<states::Window()>;
/** The measures of a window, in light or in dark. */
using ByAppearance = std::function<Measures(bool dark)>;

/** Begins a table whose rows are made of Make and Measures. */
inline void beginMeasures()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<Measures>("measures");
}

/** That the window of the current row has its measures. */
inline void keepMeasures()
{
    QFETCH(Make, make);
    QFETCH(Measures, measures);
    const auto window = make();
    const auto wrong = wrongMeasures(*window, measures);
    QVERIFY2(wrong.isEmpty(), qUtf8Printable(wrong.join(u'\n')));
}

/** Begins a table whose rows are made of Make and ByAppearance. */
inline void beginByAppearance()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<ByAppearance>("measures");
}

/** That the window of the current row has its measures, in light and in dark. */
inline void keepByAppearance()
{
    QFETCH(Make, make);
    QFETCH(ByAppearance, measures);
    QStringList wrong;
    for (const bool dark : {false, true}) {
        const Appearance appearance(dark);
        const auto window = make();
        QTRY_COMPARE(window->window()->color(), Appearance::window(dark));
        for (const auto &each : wrongMeasures(*window, measures(dark)))
            wrong << (dark ? u"dark: "_s : u"light: "_s) + each;
    }
    QVERIFY2(wrong.isEmpty(), qUtf8Printable(wrong.join(u'\n')));
}

} // namespace zorvane::tests
