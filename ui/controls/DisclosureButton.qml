import QtQuick

/* Unfolds what belongs to its row. The chevron points down, and the fill stays, while it is open. */
Pressable {
    id: root

    required property string symbol
    property bool open: false

    width: 164
    height: 24
    focusGap: 0
    focusInset: width - fill.width

    Accessible.checkable: true
    Accessible.checked: open

    Rectangle {
        id: fill

        anchors.right: parent.right
        width: content.width + 16
        height: parent.height
        radius: 6
        color: root.pressed ? Theme.plainPressed : Theme.quaternary
        opacity: root.open || root.hovered ? 1 : 0

        Behavior on opacity  {
            NumberAnimation {
                duration: Motion.hover
            }
        }
    }

    Row {
        id: content

        anchors.right: parent.right
        anchors.rightMargin: 8
        height: parent.height
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol
            box: 16
            color: Theme.secondary
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            font: Type.subheadline
            color: Theme.secondary
            Accessible.ignored: true
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.right"
            box: Symbols.box(9)
            stroke: Symbols.bold
            color: Theme.secondary
            rotation: root.open ? 90 : 0

            Behavior on rotation  {
                NumberAnimation {
                    duration: Motion.disclosure
                    easing.type: Easing.InOutQuad
                }
            }
        }
    }
}
