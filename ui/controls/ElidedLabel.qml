import QtQuick

/* A line that may not fit its width; then its whole text is in its tool tip. */
Label {
    id: root

    Loader {
        anchors.fill: parent
        active: root.truncated
        sourceComponent: MouseArea {
            hoverEnabled: true
            acceptedButtons: Qt.NoButton

            Loader {
                active: (parent as MouseArea).containsMouse
                sourceComponent: ToolTip {
                    text: root.text
                    target: root
                }
            }
        }
    }
}
