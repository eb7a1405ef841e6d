pragma Singleton
import QtQuick

/* The weights of the symbols, as stroke widths on their grid of 24, and their sizes. */
QtObject {
    readonly property real light: 1.25
    readonly property real thin: 1.4
    readonly property real regular: 1.6
    readonly property real medium: 1.85
    readonly property real semibold: 2.15
    readonly property real bold: 2.6

    /* The side of the square for a symbol that stands at a font size. */
    function box(fontSize: int): int {
        return Math.round(1.36 * fontSize);
    }
}
