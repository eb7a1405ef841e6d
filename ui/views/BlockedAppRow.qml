import QtQuick

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
    readonly property real textLeft: 68
    readonly property real lineHeight: 56

    signal removeRequested
    signal unfoldRequested(bool unfold)

    Rectangle {
        id: divider

        objectName: "divider"
        x: root.textLeft
        width: root.width - x - 16
        height: root.first ? 0 : 1
        color: Theme.separator
    }

    Item {
        id: line

        y: divider.height
        width: root.width
        height: root.lineHeight

        FocusRing {
            visible: root.focused
            gap: -6
            radius: 10
        }

        Image {
            objectName: "rowIcon"
            x: 16
            anchors.verticalCenter: parent.verticalCenter
            width: 38
            height: 38
            source: root.icon
            sourceSize.width: width
            sourceSize.height: height
        }

        Column {
            x: root.textLeft
            anchors.verticalCenter: parent.verticalCenter
            width: actions.x - 16 - x
            spacing: 2

            ElidedLabel {
                objectName: "rowName"
                width: parent.width
                text: root.name
                font: Type.bodyMedium
                elide: Text.ElideRight
            }

            ElidedLabel {
                objectName: "rowIdentifiers"
                width: parent.width
                text: root.identifiers
                font: Type.subheadline
                color: Theme.secondary
                elide: Text.ElideMiddle
            }
        }

        Row {
            id: actions

            anchors.right: parent.right
            anchors.rightMargin: 12
            height: parent.height
            spacing: 10

            Badge {
                objectName: "blockedBadge"
                anchors.verticalCenter: parent.verticalCenter
                symbol: "lock.fill"
                text: "Blocked"
            }

            DisclosureButton {
                objectName: "disclosure"
                anchors.verticalCenter: parent.verticalCenter
                symbol: "point.3.connected.trianglepath.dotted"
                text: root.componentCount + " network " + (root.componentCount === 1 ? "process" : "processes")
                open: root.unfolded
                Accessible.description: root.name
                onClicked: root.unfoldRequested(!root.unfolded)
            }

            PlainSymbolButton {
                anchors.verticalCenter: parent.verticalCenter
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
    }

    ComponentLines {
        objectName: "componentLines"
        y: line.y + line.height
        width: root.width
        textLeft: root.textLeft
        lines: root.lines
        unfolding: root.unfolding
        viewTop: root.viewTop - y
        viewBottom: root.viewBottom - y
    }
}
