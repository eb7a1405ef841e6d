import QtQuick
import Zorvane.Ui

/*
 * Why protection could not be switched on, in the system's own words. While the label fades out,
 * what was read stays.
 */
Item {
    id: root

    required property FilterController filter
    property string message

    function follow(): void {
        if (root.filter.status.kind === FilterStatus.Failed)
            root.message = root.filter.status.message;
    }

    Component.onCompleted: follow()

    Connections {
        function onStatusChanged(): void {
            root.follow();
        }

        target: root.filter
    }

    objectName: "failure"
    width: parent?.width ?? 0
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
        y: Math.max(0, Math.ceil((symbol.height - implicitHeight / lineCount) / 2))
        wrapMode: Text.Wrap
        lineHeight: 1.08
        text: root.message
        font: Type.caption
        color: Theme.orangeText
    }
}
