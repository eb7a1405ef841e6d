import QtQuick

/* The red mark of a row: a symbol and a word. */
Rectangle {
    id: root

    required property string symbol
    required property string text

    width: label.x + label.width + 7.5
    height: 20
    radius: 6
    color: Theme.faded(Theme.red, 0.09)

    Symbol {
        id: mark

        x: 7.5
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        box: Symbols.box(9)
        stroke: Symbols.semibold
        color: Theme.redText
    }

    Label {
        id: label

        x: mark.x + mark.width + 3
        y: (parent.height - height) / 2 + 0.5
        text: root.text
        font: Type.captionMedium
        color: Theme.redText
    }
}
