pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* Shown while the system waits for the user to allow the extension. */
Panel {
    id: root

    required property AppBlockStore store
    required property SystemCommands system

    objectName: "approvalBox"
    width: parent?.width ?? 0
    accent: Theme.blue
    padding: 18
    fillOpacity: 0.08
    strokeOpacity: 0.25

    Symbol {
        id: symbol

        name: "gear.badge"
        box: Symbols.box(25)
        color: Theme.blue
    }

    Column {
        anchors.left: symbol.right
        anchors.leftMargin: 14
        anchors.right: parent.right
        topPadding: 1
        spacing: 14

        Column {
            width: parent.width
            spacing: 11

            Column {
                width: parent.width
                spacing: 3

                Label {
                    text: "Finish enabling protection"
                    font: Type.headline
                    Accessible.role: Accessible.Heading
                }

                Label {
                    width: parent.width
                    wrapMode: Text.Wrap
                    lineHeight: 1.08
                    text: "macOS is waiting for you to approve Zorvane."
                    font: Type.subheadline
                    color: Theme.secondary
                }
            }

            Column {
                width: parent.width
                spacing: 5

                Repeater {
                    model: ["1. Open System Settings.", "2. Scroll to Extensions and choose By Category.", "3. If Network Extensions is listed, open it and enable Zorvane.", "4. If it is not listed yet, return here and retry activation."]

                    Label {
                        required property string modelData

                        width: parent.width
                        wrapMode: Text.Wrap
                        lineHeight: 1.08
                        text: modelData
                        font: Type.caption
                    }
                }
            }
        }

        Row {
            spacing: 8

            Button {
                prominent: true
                text: "Open System Settings"
                onClicked: root.system.openSystemSettings()
            }

            Button {
                text: "Retry Activation"
                onClicked: root.store.refreshProtection()
            }
        }
    }
}
