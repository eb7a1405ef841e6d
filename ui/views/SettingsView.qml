pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* What can be set, in two groups. */
Item {
    id: root

    required property AppBlockStore store
    required property UpdateController updates
    readonly property bool hasUpdate: updates.availableUpdate !== undefined

    Column {
        x: 20
        y: 20
        width: parent.width - 40
        spacing: 24

        SettingsGroup {
            width: parent.width
            title: "Protection"

            Item {
                width: parent.width
                height: 64

                Label {
                    id: name

                    y: 14
                    text: "Enable network filter"
                    Accessible.ignored: true
                }

                ProtectionSwitch {
                    anchors.right: parent.right
                    anchors.verticalCenter: name.verticalCenter
                    transformOrigin: Item.Right
                    scale: 0.82
                    store: root.store
                    name: "Enable network filter"
                }

                Label {
                    anchors.top: name.bottom
                    anchors.topMargin: 6
                    width: parent.width
                    wrapMode: Text.Wrap
                    text: "macOS asks for permission before enabling the extension for the first time."
                    font: Type.caption
                    color: Theme.secondary
                }
            }
        }

        SettingsGroup {
            width: parent.width
            title: "Updates"

            SettingsValue {
                name: "Current version"
                value: root.updates.currentVersionText()
            }

            Separator {}

            SettingsValue {
                visible: root.hasUpdate
                name: "Available version"
                value: root.hasUpdate ? root.updates.availableUpdate.version : ""
            }

            Separator {
                visible: root.hasUpdate
            }

            Item {
                visible: root.hasUpdate
                width: parent.width
                height: 44

                Button {
                    y: 10
                    small: true
                    prominent: true
                    text: "Download Update"
                    onClicked: root.updates.openDownload()
                }
            }

            Separator {
                visible: root.hasUpdate
            }

            Item {
                width: parent.width
                height: message.visible ? message.y + message.height + 12 : 44

                Button {
                    id: check

                    y: 10
                    small: true
                    text: "Check for Updates"
                    available: !root.updates.isChecking
                    onClicked: root.updates.checkForUpdates(true, true)
                }

                Label {
                    id: message

                    objectName: "updateMessage"
                    y: check.y + check.height + 8
                    width: parent.width
                    visible: text !== ""
                    wrapMode: Text.Wrap
                    text: root.updates.message
                    font: Type.caption
                    color: Theme.secondary
                }
            }
        }
    }
}
