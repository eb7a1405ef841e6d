import QtQuick

/* Why protection could not be switched on, in the system's own words. */
Item {
    id: root

    required property string message

    implicitHeight: Math.max(symbol.height, label.height)
    height: implicitHeight

    Symbol {
        id: symbol

        x: 2
        name: "exclamationmark.triangle.fill"
        box: Symbols.box(11)
        color: Theme.failureSymbol
    }

    Label {
        id: label

        anchors.left: symbol.right
        anchors.leftMargin: 5
        anchors.right: parent.right
        y: Math.max(0, Math.round((symbol.height - implicitHeight / lineCount) / 2))
        wrapMode: Text.Wrap
        text: root.message
        font: Type.caption
        color: Theme.orangeText
    }
}
