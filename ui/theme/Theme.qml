pragma Singleton
import QtQuick

/*
 * Every colour of the windows, in light and dark. Follows the system's palette while running.
 */
QtObject {
    id: root

    readonly property SystemPalette palette: SystemPalette {
    }
    readonly property bool dark: luminance(palette.window) < 0.5

    // Elsewhere the system has one of any theme.
    readonly property color window: Qt.platform.os === "osx" ? palette.window : dark ? "#28282a" : "#ececec"
    readonly property color header: dark ? "#2e2e30" : "#f6f6f6"
    readonly property color headerLine: dark ? black(0.40) : black(0.09)
    readonly property color card: dark ? "#323235" : "#ffffff"
    readonly property color cardStroke: dark ? white(0.08) : black(0.07)
    readonly property color sheet: dark ? "#2c2c2e" : "#f2f2f3"
    readonly property color sheetEdge: dark ? white(0.17) : black(0.15)
    readonly property real sheetEdgeWidth: dark ? 1 : 0.5
    readonly property color dim: dark ? black(0.45) : black(0.25)

    readonly property color primary: dark ? white(0.92) : black(0.86)
    readonly property color secondary: dark ? white(0.64) : black(0.60)
    readonly property color tertiary: dark ? white(0.40) : black(0.42)
    readonly property color quaternary: dark ? white(0.12) : black(0.07)
    readonly property color separator: dark ? white(0.10) : black(0.10)

    readonly property color blue: dark ? "#0a84ff" : "#007aff"
    readonly property color blueSolid: dark ? "#0a6be0" : "#0068e1"
    readonly property color orange: dark ? "#ff9f0a" : "#ff9500"
    readonly property color orangeText: dark ? "#ffb340" : "#a84e00"
    readonly property color failureSymbol: dark ? orange : orangeText
    readonly property color green: dark ? "#30d158" : "#28b84a"
    readonly property color grey: dark ? "#98989d" : "#8e8e93"
    readonly property color red: dark ? "#ff453a" : "#ff3b30"
    readonly property color redText: dark ? "#ff7a72" : "#c8101e"
    readonly property color focus: faded(blue, dark ? 0.80 : 0.90)

    readonly property color plainPressed: dark ? white(0.20) : black(0.13)

    readonly property color switchOff: dark ? white(0.20) : black(0.14)
    readonly property color switchDisabled: dark ? white(0.09) : black(0.07)
    readonly property color switchDisabledOn: faded(blue, dark ? 0.45 : 0.40)
    readonly property color switchEdge: dark ? white(0.08) : black(0.085)
    readonly property color knob: dark ? "#f4f4f5" : "#ffffff"
    readonly property color knobDisabled: dark ? "#7c7c80" : "#fbfbfb"

    function black(opacity: real): color {
        return Qt.rgba(0, 0, 0, opacity);
    }

    function white(opacity: real): color {
        return Qt.rgba(1, 1, 1, opacity);
    }

    /* The colour at an opacity of its own. */
    function faded(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, opacity);
    }

    function luminance(shade: color): real {
        return 0.2126 * shade.r + 0.7152 * shade.g + 0.0722 * shade.b;
    }
}
