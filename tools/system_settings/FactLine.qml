import QtQuick
import Zorvane.Ui

/* One fact: its name on the left, its value on the right. */
Item {
    id: root

    required property string name
    required property string value

    height: 16

    Accessible.role: Accessible.StaticText
    Accessible.name: `${name}: ${value}`

    Label {
        text: root.name
        Accessible.ignored: true
    }

    Label {
        anchors.right: parent.right
        text: root.value
        color: Theme.secondary
        Accessible.ignored: true
    }
}
