pragma ComponentBehavior: Bound
import QtQuick

/*
 * What an application runs as, one line each, under its row. Only the lines in view are built.
 */
Item {
    id: root

    required property var lines
    required property real textLeft
    /* From folded, 0, to unfolded, 1. */
    required property real unfolding
    /* The part of this list that is in view, in its own coordinates. */
    required property real viewTop
    required property real viewBottom
    /* The line that the keyboard is on; -1 for none. That is told by whoever stands there for it. */
    required property int focusedLine
    readonly property real lookahead: 64
    readonly property int first: bounded((viewTop - lookahead - RowMeasures.linesTop) / RowMeasures.line)
    readonly property int last: bounded((viewBottom + lookahead - RowMeasures.linesTop) / RowMeasures.line + 1)

    function bounded(line: real): int {
        return Math.max(0, Math.min(lines.length, Math.floor(line)));
    }

    visible: unfolding > 0
    height: Math.round(unfolding * RowMeasures.linesHeight(lines.length))
    // The lines come in over the second half of the unfolding.
    opacity: Math.max(0, unfolding * 2 - 1)

    Accessible.role: Accessible.List
    Accessible.name: "Network processes"

    Rectangle {
        objectName: "linesDivider"
        x: root.textLeft
        width: root.width - x - 16
        height: 1
        color: Theme.separator
    }

    Repeater {
        model: Math.max(0, root.last - root.first)

        Item {
            id: component

            required property int index
            readonly property var line: root.lines[root.first + index] ?? null

            objectName: "componentLine"
            y: RowMeasures.linesTop + (root.first + index) * RowMeasures.line
            width: root.width
            height: RowMeasures.line

            Accessible.ignored: root.first + index === root.focusedLine
            Accessible.role: Accessible.ListItem
            Accessible.name: name.text
            Accessible.description: kind.text

            Symbol {
                objectName: "componentSymbol"
                x: root.textLeft
                anchors.verticalCenter: parent.verticalCenter
                name: component.line?.symbol ?? "app"
                box: 24
                stroke: Symbols.thin
                color: Theme.secondary
            }

            ElidedLabel {
                id: name

                objectName: "componentName"
                x: root.textLeft + 24 + 8
                anchors.verticalCenter: parent.verticalCenter
                width: kind.x - 12 - x
                text: component.line?.name ?? ""
                font: Type.callout
                elide: Text.ElideMiddle
            }

            Label {
                id: kind

                objectName: "componentKind"
                anchors.right: parent.right
                anchors.rightMargin: 20
                anchors.baseline: name.baseline
                text: component.line?.kind ?? ""
                font: Type.caption
                color: Theme.secondary
            }
        }
    }
}
