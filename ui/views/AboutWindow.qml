import QtQuick
import Zorvane.Ui

/* What the program is called, and which one it is. */
Window {
    id: root

    required property AppBlockStore store

    title: "About Zorvane"
    flags: Qt.Window | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowSystemMenuHint | Qt.WindowCloseButtonHint
    color: Theme.window
    width: 280
    height: 190
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height

    Shortcut {
        sequences: [StandardKey.Close, StandardKey.Cancel] // qmllint disable unqualified
        onActivated: root.close()
    }

    Column {
        anchors.centerIn: parent
        width: parent.width - 40

        OwnIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            side: 64
        }

        Item {
            width: 1
            height: 14
        }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Zorvane"
            font: Type.app
            Accessible.role: Accessible.Heading
        }

        Item {
            width: 1
            height: 6
        }

        ElidedLabel {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            text: "Version " + root.store.updateController.currentVersionText()
            font: Type.subheadline
            color: Theme.secondary
        }
    }
}
