import QtQuick

/* Words that can be pressed. */
Pressable {
    id: root

    width: Math.ceil(label.implicitWidth) + 16
    height: 24
    focusGap: 0

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: root.pressed ? Theme.plainPressed : Theme.quaternary
        opacity: root.hovered ? 1 : 0

        Behavior on opacity {
            NumberAnimation {
                duration: Motion.hover
            }
        }
    }

    Label {
        id: label

        anchors.centerIn: parent
        anchors.alignWhenCentered: false
        text: root.text
        color: root.pressed ? Theme.primary : Theme.secondary
        Accessible.ignored: true
    }
}
