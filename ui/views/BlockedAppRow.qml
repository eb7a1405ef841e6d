pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* What one blocked application shows in the list. */
Item {
    id: root

    required property bool first
    /* The keyboard is on the row itself, not on one of its buttons. */
    required property bool focused
    required property string name
    required property string identifiers
    required property url icon
    required property int componentCount
    required property var lines
    required property bool unfolded
    /* From folded, 0, to unfolded, 1. */
    required property real unfolding
    /* The part of this row that is in view, in its own coordinates. */
    required property real viewTop
    required property real viewBottom
    /* The line that the keyboard is on; -1 for none. */
    required property int focusedLine
    readonly property real textLeft: 68

    signal removeRequested
    signal unfoldRequested(bool unfold)

    Rectangle {
        id: divider

        objectName: "divider"
        x: root.textLeft
        width: root.width - x - 16
        height: root.first ? 0 : RowMeasures.divider
        color: Theme.separator
    }

    Item {
        id: line

        objectName: "rowLine"
        y: divider.height
        width: root.width
        height: RowMeasures.row

        Lazy {
            anchors.fill: parent
            z: 1
            active: root.focused
            document: "FocusRing"
            properties: ({
                    "gap": -6,
                    "radius": 10
                })
        }

        Image {
            objectName: "rowIcon"
            x: 16
            y: 9
            width: 38
            height: 38
            source: root.icon
            sourceSize.width: width
            sourceSize.height: height
        }

        ElidedLabel {
            id: name

            objectName: "rowName"
            x: root.textLeft
            y: Math.floor((RowMeasures.row - height - 2 - identifiers.height) / 2)
            width: badge.x - 16 - x
            text: root.name
            font: Type.bodyMedium
            elide: Text.ElideRight
        }

        ElidedLabel {
            id: identifiers

            objectName: "rowIdentifiers"
            x: root.textLeft
            y: name.y + name.height + 2
            width: name.width
            text: root.identifiers
            font: Type.subheadline
            color: Theme.secondary
            elide: Text.ElideMiddle
        }

        Badge {
            id: badge

            objectName: "blockedBadge"
            x: disclosure.x - 10 - width
            y: 18
            symbol: "lock.fill"
            text: "Blocked"
        }

        DisclosureButton {
            id: disclosure

            objectName: "disclosure"
            x: remove.x - 10 - width
            y: 16
            symbol: "point.3.connected.trianglepath.dotted"
            text: root.componentCount + " network " + (root.componentCount === 1 ? "process" : "processes")
            open: root.unfolded
            unfolding: root.unfolding
            Accessible.description: root.name
            onClicked: root.unfoldRequested(!root.unfolded)
        }

        PlainSymbolButton {
            id: remove

            x: root.width - 12 - width
            y: 16
            symbol: "xmark"
            fontSize: 11
            stroke: Symbols.bold
            side: 24
            risesOnHover: true
            toolTip: "Remove from list"
            Accessible.description: root.name
            onClicked: root.removeRequested()
        }
    }

    Lazy {
        y: line.y + line.height
        active: root.unfolding > 0

        ComponentLines {
            objectName: "componentLines"
            width: root.width
            textLeft: root.textLeft
            lines: root.lines
            unfolding: root.unfolding
            focusedLine: root.focusedLine
            viewTop: root.viewTop - line.y - line.height
            viewBottom: root.viewBottom - line.y - line.height
        }
    }
}
