pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* The installed version, a newer one where there is one, and the check for it. */
Column {
    id: root

    required property UpdateController updates
    readonly property bool hasUpdate: updates.availableUpdate !== undefined
    /* Of the newer release. One that is taken back is told of until its line is gone. */
    property string version

    function takeUp(): void {
        const update = root.updates.availableUpdate;
        if (update !== undefined)
            root.version = update.version;
    }

    Component.onCompleted: takeUp()

    Connections {
        function onChanged(): void {
            root.takeUp();
        }

        target: root.updates
    }

    LabelledValue {
        objectName: "currentVersion"
        width: parent.width
        name: "Current version"
        value: root.updates.currentVersionText()
    }

    Separator {
        width: parent.width
    }

    Reveal {
        objectName: "availableUpdate"
        width: parent.width
        gap: 0
        shown: root.hasUpdate

        Column {
            width: root.width

            LabelledValue {
                objectName: "availableVersion"
                width: parent.width
                name: "Available version"
                value: root.version
            }

            Separator {
                width: parent.width
            }

            Item {
                width: parent.width
                height: 44

                Button {
                    anchors.verticalCenter: parent.verticalCenter
                    small: true
                    prominent: true
                    text: "Download Update"
                    onClicked: root.updates.openDownload()
                }
            }

            Separator {
                width: parent.width
            }
        }
    }

    Item {
        width: parent.width
        height: message.text !== "" ? message.y + message.height + 12 : 44

        Button {
            id: check

            y: 10
            small: true
            text: "Check for Updates"
            available: !root.updates.isChecking
            onClicked: root.updates.checkForUpdates(true, true)
        }

        MessageLabel {
            id: message

            objectName: "updateMessage"
            y: check.y + check.height + 9
            width: parent.width
            height: Math.ceil(implicitHeight)
            lineHeight: 1.08
            // Whatever the version, the window does not grow.
            maximumLineCount: 8
            message: root.updates.message
            font: Type.caption
            color: Theme.secondary
        }
    }
}
