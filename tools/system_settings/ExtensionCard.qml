import QtQuick
import Zorvane.Ui
import Zorvane.SystemSettings

/* Where the user allows the extension, or takes that back. */
Card {
    id: root

    required property SystemState system

    function stateText(): string {
        if (!system.isApproved)
            return "Not allowed";
        return system.isActive ? "Allowed and active" : "Allowed";
    }

    function approvalText(): string {
        switch (system.approval) {
        case SystemState.Granted:
            return "This system allows every extension without asking. With \"approval\": \"ask\" in its system.json it waits for your decision here.";
        case SystemState.Denied:
            return "This system refuses every extension, as \"approval\": \"denied\" in its system.json says.";
        default:
            return "";
        }
    }

    title: "Network Extensions"

    Item {
        width: parent.width
        height: 32

        Rectangle {
            id: dot

            anchors.verticalCenter: parent.verticalCenter
            width: 8
            height: 8
            radius: 4
            color: root.system.isApproved ? Theme.green : Theme.grey
        }

        Column {
            anchors.left: dot.right
            anchors.leftMargin: 10
            anchors.right: buttons.left
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Label {
                width: parent.width
                text: "Zorvane"
                font: Type.bodyMedium
            }

            Label {
                objectName: "extensionState"
                width: parent.width
                text: root.stateText()
                font: Type.subheadline
                color: Theme.secondary
            }
        }

        Row {
            id: buttons

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            Button {
                objectName: "block"
                text: "Block"
                available: root.system.isApproved
                onClicked: root.system.block()
            }

            Button {
                objectName: "allow"
                text: "Allow"
                prominent: true
                available: !root.system.isApproved
                onClicked: root.system.allow()
            }
        }
    }

    Label {
        objectName: "approvalNote"
        width: parent.width
        visible: text !== ""
        wrapMode: Text.Wrap
        text: root.approvalText()
        font: Type.subheadline
        color: Theme.secondary
    }

    Label {
        objectName: "error"
        width: parent.width
        visible: text !== ""
        wrapMode: Text.Wrap
        text: root.system.error
        font: Type.subheadline
        color: Theme.redText
    }
}
