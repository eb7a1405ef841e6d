import QtQuick
import Zorvane.Ui

/* How protection stands: a dot, a text, and the switch. */
Item {
    id: root

    required property AppBlockStore store
    readonly property int kind: store.filterController.status.kind

    function statusColor(kind: int): color {
        switch (kind) {
        case FilterStatus.Enabled:
            return Theme.green;
        case FilterStatus.Failed:
            return Theme.red;
        case FilterStatus.Inactive:
            return Theme.grey;
        default:
            return Theme.orange;
        }
    }

    function statusText(kind: int): string {
        switch (kind) {
        case FilterStatus.InstallationRequired:
            return "Move to Applications";
        case FilterStatus.Activating:
            return "Turning on…";
        case FilterStatus.AwaitingApproval:
            return "Awaiting approval";
        case FilterStatus.Enabled:
            return "Protection on";
        case FilterStatus.Failed:
            return "Action required";
        default:
            return "Protection off";
        }
    }

    width: toggle.width + 18 + label.width + 8 + dot.width
    height: 28

    Rectangle {
        id: dot

        objectName: "statusDot"
        anchors.verticalCenter: parent.verticalCenter
        width: 8
        height: 8
        radius: 4
        color: root.statusColor(root.kind)
    }

    Label {
        id: label

        objectName: "statusText"
        anchors.left: dot.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: root.statusText(root.kind)
        font: Type.subheadlineMedium
    }

    ProtectionSwitch {
        id: toggle

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        store: root.store
    }
}
