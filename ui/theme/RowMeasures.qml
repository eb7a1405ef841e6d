pragma Singleton
import QtQuick

/* How high the rows of the list are, and where the lines of an unfolded one stand. */
QtObject {
    id: root

    /* What a row shows of its application; from the second row on, beneath a divider. */
    readonly property real row: 56
    readonly property real divider: 1
    /* From the end of that to the first line, with a divider of its own. */
    readonly property real linesTop: 1 + 4
    readonly property real line: 32
    readonly property real linesBottom: 6

    /* What stands in the place of rows while there are none. */
    readonly property real empty: 170

    /* Of so many lines, with what surrounds them. */
    function linesHeight(count: int): real {
        return root.linesTop + root.line * count + root.linesBottom;
    }
}
