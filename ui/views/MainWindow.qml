import QtQuick
import Zorvane.Ui

/* The one main window. What it shows and does is the store's; it is shown by its owner. */
Window {
    id: root

    required property AppBlockStore store
    required property BlockedAppsModel applications
    required property SystemCommands system

    title: "Zorvane"
    color: Theme.window
    width: 760
    height: 650
    minimumWidth: 680
    minimumHeight: 560

    ContentView {
        anchors.fill: parent
        enabled: !alert.open
        store: root.store
        applications: root.applications
        system: root.system
    }

    Alert {
        id: alert

        objectName: "alert"
        title: "Zorvane"
        message: root.store.alertMessage
        onDismissed: root.store.dismissAlert()
    }
}
