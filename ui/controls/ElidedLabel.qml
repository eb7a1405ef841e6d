pragma ComponentBehavior: Bound
import QtQuick

/* A line that may not fit its width; then its whole text is in its tool tip. */
Label {
    id: root

    readonly property bool hovered: pointer.containsMouse

    MouseArea {
        id: pointer

        anchors.fill: parent
        hoverEnabled: root.truncated
        acceptedButtons: Qt.NoButton
    }

    Repeater {
        model: root.truncated && root.hovered ? 1 : 0

        ToolTip {
            text: root.text
            target: root
        }
    }
}
