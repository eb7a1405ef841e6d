import QtQuick
import Zorvane.Ui

/* The protection switch with its name and a note on what the system will ask. */
Item {
    id: root

    required property AppBlockStore store

    height: 64

    Label {
        id: name

        y: 14
        text: "Enable network filter"
        Accessible.ignored: true
    }

    ProtectionSwitch {
        objectName: "smallSwitch"
        anchors.right: parent.right
        anchors.verticalCenter: name.verticalCenter
        transformOrigin: Item.Right
        scale: 0.82
        store: root.store
        name: name.text
    }

    Label {
        objectName: "protectionNote"
        anchors.top: name.bottom
        anchors.topMargin: 6
        width: parent.width
        wrapMode: Text.Wrap
        lineHeight: 1.08
        text: "macOS asks for permission before enabling the extension for the first time."
        font: Type.caption
        color: Theme.secondary
    }
}
