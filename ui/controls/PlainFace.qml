import QtQuick

/* What a plain button is painted with while the pointer is over it. */
Rectangle {
    id: root

    property bool lit: false
    property bool pressed: false
    /* How much of the button, from its left, stays free. */
    property real inset: 0

    objectName: "plainFace"
    anchors.fill: parent
    anchors.leftMargin: inset
    z: -1
    color: pressed ? Theme.plainPressed : Theme.quaternary
    opacity: lit ? 1 : 0

    Behavior on opacity  {
        NumberAnimation {
            duration: Motion.hover
        }
    }
}
