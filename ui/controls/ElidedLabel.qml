import QtQuick
import Zorvane.Ui

/* A line that may not fit its width; then its whole text is in its tool tip. */
Label {
    id: root

    HoverArea {
        objectName: "wholeText"
        anchors.fill: parent
        toolTip: root.truncated ? root.text : ""
    }
}
