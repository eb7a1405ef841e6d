import QtQuick

/* Words that can be pressed. */
Pressable {
    id: root

    width: Math.ceil(label.implicitWidth) + 16
    height: 24
    focusGap: 0
    lit: hovered

    Label {
        id: label

        anchors.centerIn: parent
        anchors.alignWhenCentered: false
        text: root.text
        color: root.pressed ? Theme.primary : Theme.secondary
        Accessible.ignored: true
    }
}
