import QtQuick
import Zorvane.Ui

/* The commands of the application's menu. */
Menu {
    id: root

    required property ApplicationMenu bar

    title: bar.title
    name: bar.name
    onClosed: root.bar.close()

    Connections {
        function onDraggedTo(place: point): void {
            root.pointAt(place);
        }

        function onReleasedAt(place: point): void {
            root.releaseAt(place);
        }

        target: root.bar
    }

    MenuItem {
        text: "About Zorvane"
        onTriggered: root.bar.aboutRequested()
    }

    MenuItem {
        text: "Check for Updates…"
        available: !root.bar.updates.isChecking
        onTriggered: root.bar.updateCheckRequested()
    }

    MenuLine {
    }

    MenuItem {
        text: "Settings…"
        keys: root.bar.settingsKeys
        onTriggered: root.bar.settingsRequested()
    }

    MenuLine {
    }

    MenuItem {
        text: "Quit Zorvane"
        keys: root.bar.quitKeys
        onTriggered: root.bar.quitRequested()
    }
}
