import QtQuick

/* The ring around the control that has the keyboard. */
Rectangle {
    id: root

    property real gap: 1

    anchors.fill: parent
    anchors.margins: -(gap + 3)
    color: "transparent"
    border.width: 3
    border.color: Theme.focus
    z: 1
}
