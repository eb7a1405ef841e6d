import QtQuick
import Zorvane.Ui

/* The settings. Not above the main window, and not below it: a window of its own. */
Window {
    id: root

    required property AppBlockStore store

    title: "Zorvane Settings"
    flags: Qt.Window | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowSystemMenuHint | Qt.WindowMinimizeButtonHint | Qt.WindowCloseButtonHint
    color: Theme.window
    width: 460
    height: 520
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height

    Shortcut {
        sequences: [StandardKey.Close] // qmllint disable unqualified
        onActivated: root.close()
    }

    SettingsView {
        id: page

        anchors.fill: parent
        enabled: !alert.open
        store: root.store
    }

    Alert {
        id: alert

        objectName: "alert"
        title: "Zorvane"
        message: root.store.alertMessage
        onDismissed: root.store.dismissAlert()
        onClosed: page.forceActiveFocus()
    }
}
