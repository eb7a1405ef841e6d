pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* What can be set, and what is known of newer releases. */
FocusScope {
    id: root

    required property AppBlockStore store

    Column {
        x: 20
        y: 20
        width: parent.width - 40
        spacing: 24

        Group {
            width: parent.width
            title: "Protection"

            ProtectionSetting {
                width: parent.width
                store: root.store
            }
        }

        Group {
            width: parent.width
            title: "Updates"

            UpdateSettings {
                width: parent.width
                updates: root.store.updateController
            }
        }
    }
}
