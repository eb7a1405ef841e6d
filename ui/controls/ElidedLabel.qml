pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* A line that may not fit its width; then its whole text is in its tool tip. */
Label {
    id: root

    readonly property bool hovered: pointer.containsMouse

    // Names that are written from right to left start where all the others do, too.
    horizontalAlignment: Text.AlignLeft

    MouseArea {
        id: pointer

        anchors.fill: parent
        hoverEnabled: root.truncated
        acceptedButtons: Qt.NoButton
    }

    Lazy {
        active: root.truncated && root.hovered

        ToolTip {
            text: root.text
            target: root
        }
    }
}
