import QtQuick
import Zorvane.Ui

/* A newer release is there to be had. One that is taken back is told of until the panel is gone. */
Panel {
    id: root

    required property UpdateController updates
    property string version
    property string announcement

    function takeUp(): void {
        const update = root.updates.availableUpdate;
        if (update === undefined)
            return;
        root.version = update.version;
        root.announcement = update.announcement;
    }

    objectName: "updateBox"
    width: parent?.width ?? 0
    accent: Theme.blue
    padding: 16
    fillOpacity: 0.08
    strokeOpacity: 0.25

    Component.onCompleted: takeUp()

    Connections {
        function onChanged(): void {
            root.takeUp();
        }

        target: root.updates
    }

    Item {
        objectName: "updateContents"
        width: parent.width
        height: Math.max(texts.height, symbol.height)

        Symbol {
            id: symbol

            anchors.verticalCenter: parent.verticalCenter
            name: "arrow.down.circle.fill"
            box: Symbols.box(25)
            color: Theme.blue
        }

        Column {
            id: texts

            anchors.left: symbol.right
            anchors.leftMargin: 14
            anchors.right: download.left
            anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            spacing: 3

            Label {
                width: parent.width
                wrapMode: Text.Wrap
                text: "Zorvane " + root.version + " is available"
                font: Type.headline
                Accessible.role: Accessible.Heading
            }

            Label {
                width: parent.width
                wrapMode: Text.Wrap
                lineHeight: 1.08
                text: root.announcement
                font: Type.subheadline
                color: Theme.secondary
            }
        }

        Button {
            id: download

            anchors.right: dismiss.left
            anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            prominent: true
            text: "Download Update"
            onClicked: root.updates.openDownload()
        }

        PlainSymbolButton {
            id: dismiss

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "xmark"
            fontSize: 11
            side: 24
            risesOnHover: true
            toolTip: "Remind me next time"
            onClicked: root.updates.isBannerVisible = false
        }
    }
}
