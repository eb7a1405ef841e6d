import QtQuick
import Zorvane.Ui

/* The settings: protection once more, and updates. */
Window {
    id: root

    required property AppBlockStore store
    required property UpdateController updates

    title: "Zorvane Settings"
    color: Theme.window
    width: 460
    height: 520
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height

    SettingsView {
        anchors.fill: parent
        enabled: !alert.open
        store: root.store
        updates: root.updates
    }

    Alert {
        id: alert

        objectName: "alert"
        title: "Zorvane"
        message: root.store.alertMessage
        onDismissed: root.store.dismissAlert()
    }
}
