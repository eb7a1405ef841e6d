import QtQuick
import Zorvane.Ui

/* A line that may not fit its width; then its whole text is in its tool tip. */
Label {
    id: root

    // Names that are written from right to left start where all the others do, too.
    horizontalAlignment: Text.AlignLeft

    HoverArea {
        anchors.fill: parent
        toolTip: root.truncated ? root.text : ""
    }
}
