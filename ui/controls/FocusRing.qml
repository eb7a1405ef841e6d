import QtQuick

/* The ring around the control that has the keyboard. */
Rectangle {
    id: root

    property real gap: 1
    /* How much of the control, from its left, it leaves out. */
    property real inset: 0

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -(gap + 3)
    anchors.leftMargin: inset - (gap + 3)
    color: "transparent"
    border.width: 3
    border.color: Theme.focus
    z: 1
}
