import QtQuick

/* What stands in the place of the rows while there are none. */
Item {
    objectName: "emptyList"
    width: parent?.width ?? 0
    height: RowMeasures.empty

    Column {
        objectName: "emptyListContents"
        anchors.centerIn: parent
        width: parent.width - 40

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "checkmark.shield"
            box: Symbols.box(30)
            stroke: Symbols.light
            color: Theme.secondary
        }

        Item {
            width: 1
            height: 12
        }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "No blocked apps"
            font: Type.headline
        }

        Item {
            width: 1
            height: 5
        }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            lineHeight: 1.08
            text: "Apps you add will appear here."
            font: Type.subheadline
            color: Theme.secondary
        }
    }
}
