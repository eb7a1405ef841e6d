import QtQuick
import Zorvane.Ui

/* Shown while the program stands in a folder from which the system does not enable extensions. */
Panel {
    id: root

    required property AppBlockStore store
    required property SystemCommands system

    objectName: "installationBox"
    width: parent?.width ?? 0
    accent: Theme.orange
    padding: 18
    fillOpacity: 0.09
    strokeOpacity: 0.28

    Column {
        objectName: "installationContents"
        width: parent.width
        spacing: 12

        Item {
            objectName: "installationHeading"
            width: parent.width
            height: symbol.height

            Symbol {
                id: symbol

                anchors.verticalCenter: parent.verticalCenter
                name: "arrow.down.app.fill"
                box: Symbols.box(14)
                color: Theme.orange
            }

            Label {
                anchors.left: symbol.right
                anchors.leftMargin: 7
                anchors.verticalCenter: parent.verticalCenter
                text: "Finish installing Zorvane"
                font: Type.headline
                Accessible.role: Accessible.Heading
            }
        }

        Label {
            width: Math.min(parent.width, 600)
            height: Math.ceil(implicitHeight)
            wrapMode: Text.Wrap
            lineHeight: 1.2
            text: "macOS can only enable Zorvane's network extension when the app is in the Applications folder. Quit this copy, drag Zorvane from Downloads into Applications, then open it there."
            font: Type.subheadline
            color: Theme.secondary
        }

        Row {
            spacing: 8

            Button {
                prominent: true
                text: "Open Finder Folders"
                onClicked: root.store.openInstallationFolders()
            }

            Button {
                text: "Quit Zorvane"
                onClicked: root.system.quit()
            }
        }
    }
}
