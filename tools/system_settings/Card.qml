import QtQuick
import Zorvane.Ui

/* A titled group. As high as what it holds. */
Column {
    id: root

    required property string title
    default property alias content: inside.data

    spacing: 6

    Label {
        x: 2
        text: root.title
        font: Type.headline
        Accessible.role: Accessible.Heading
    }

    Rectangle {
        width: parent.width
        height: inside.height + 28
        radius: 12
        color: Theme.card
        border.width: 1
        border.color: Theme.cardStroke

        Column {
            id: inside

            x: 14
            y: 14
            width: parent.width - 28
            spacing: 10
        }
    }
}
