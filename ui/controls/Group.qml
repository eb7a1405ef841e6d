import QtQuick

/* Settings of one kind: a heading over a card. Its children are stacked. */
Column {
    id: root

    required property string title
    default property alias content: inside.data

    spacing: 8

    Label {
        x: 14
        text: root.title
        font: Type.headline
        Accessible.role: Accessible.Heading
    }

    Rectangle {
        objectName: "groupCard"
        width: root.width
        height: inside.height
        radius: 10
        color: Theme.card

        Column {
            id: inside

            x: 14
            width: parent.width - 28
        }

        Rectangle {
            objectName: "cardEdge"
            anchors.fill: parent
            radius: parent.radius
            color: "transparent"
            border.width: 1
            border.color: Theme.cardStroke
        }
    }
}
