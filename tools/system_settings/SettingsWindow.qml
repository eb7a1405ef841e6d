import QtQuick
import Zorvane.Ui
import Zorvane.SystemSettings

/* The settings of the simulated system: whether the extension may run, and what it would block. */
Window {
    id: root

    required property SystemState system

    title: "System Settings"
    color: Theme.window
    width: 480
    height: content.height + 40
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height

    Column {
        id: content

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

        ElidedLabel {
            objectName: "folder"
            width: parent.width
            text: root.system.folder
            elide: Text.ElideMiddle
            font: Type.caption
            color: Theme.secondary
        }
    }
}
