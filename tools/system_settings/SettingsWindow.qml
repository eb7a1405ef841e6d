import QtQuick
import Zorvane.Ui
import Zorvane.SystemSettings

/*
 * The settings of the simulated system: whether the extension may run, what it would block, and
 * what becomes of a connection.
 * Of a fixed size, with room for all that may have to be said.
 */
Window {
    id: root

    required property SystemState system
    required property Traffic traffic

    title: "System Settings"
    color: Theme.window
    width: 480
    height: 700
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height

    Column {
        x: 20
        y: 20
        width: root.width - 40
        spacing: 12

        NothingBlockedPanel {
            width: parent.width
        }

        ExtensionCard {
            width: parent.width
            system: root.system
        }

        FilterCard {
            width: parent.width
            system: root.system
        }

        TrafficCard {
            width: parent.width
            traffic: root.traffic
        }
    }

    ElidedLabel {
        objectName: "folder"
        x: 22
        y: root.height - height - 16
        width: root.width - 44
        text: root.system.folder
        elide: Text.ElideMiddle
        font: Type.caption
        color: Theme.secondary
    }
}
