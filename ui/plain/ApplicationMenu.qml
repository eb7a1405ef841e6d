pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/*
 * The application's menu where a window carries its own menu bar: F10 or Alt opens it, the keys of
 * its commands work in every window.
 */
Rectangle {
    id: root

    required property UpdateController updates
    property bool open: false
    /* Alt went down, and nothing has happened since. */
    property bool altAlone: false

    signal aboutRequested
    signal updateCheckRequested
    signal settingsRequested
    signal quitRequested
    /* The menu has given the keyboard back. */
    signal closed

    function close(): void {
        if (!root.open)
            return;
        root.open = false;
        root.closed();
    }

    height: 26
    color: Theme.header

    Accessible.role: Accessible.MenuBar
    Accessible.name: "Menu bar"

    Keys.onPressed: event => {
        root.altAlone = event.key === Qt.Key_Alt;
        event.accepted = event.key === Qt.Key_F10;
        if (event.accepted)
            root.open = true;
    }
    Keys.onReleased: event => {
        event.accepted = event.key === Qt.Key_Alt && root.altAlone;
        root.altAlone = false;
        if (event.accepted)
            root.open = true;
    }

    Connections {
        function onActiveChanged(): void {
            root.altAlone = false;
            if (!root.Window.active)
                root.close();
        }

        target: root.Window.window
    }

    StandardShortcut {
        id: settingsKeys

        command: StandardKey.Preferences // qmllint disable unqualified
        otherwise: "Ctrl+,"
        onActivated: root.settingsRequested()
    }

    StandardShortcut {
        id: quitKeys

        command: StandardKey.Quit // qmllint disable unqualified
        otherwise: "Ctrl+Q"
        onActivated: root.quitRequested()
    }

    Rectangle {
        id: opener

        objectName: "menuTitle"
        x: 8
        y: 2
        width: Math.ceil(label.implicitWidth) + 20
        height: 22
        radius: 5
        color: root.open ? Theme.plainPressed : mouse.containsMouse ? Theme.quaternary : "transparent"

        Accessible.role: Accessible.MenuItem
        Accessible.name: label.text
        Accessible.onPressAction: root.open = !root.open

        Label {
            id: label

            anchors.centerIn: parent
            anchors.alignWhenCentered: false
            text: "Zorvane"
            font: Type.bodyMedium
            Accessible.ignored: true
        }

        // A command can be chosen in one go: press, drag, release.
        MouseArea {
            id: mouse

            function place(event: MouseEvent): point {
                return mapToItem(null, event.x, event.y);
            }

            anchors.fill: parent
            hoverEnabled: true
            preventStealing: true
            onPressed: root.open = true
            onPositionChanged: event => {
                if (pressed)
                    (menu.item as Menu)?.pointAt(place(event));
            }
            onReleased: event => (menu.item as Menu)?.releaseAt(place(event))
        }
    }

    Lazy {
        id: menu

        active: root.open

        Menu {
            title: opener
            name: label.text
            onClosed: root.close()

            MenuItem {
                text: "About Zorvane"
                onTriggered: root.aboutRequested()
            }

            MenuItem {
                text: "Check for Updates…"
                available: !root.updates.isChecking
                onTriggered: root.updateCheckRequested()
            }

            MenuLine {
            }

            MenuItem {
                text: "Settings…"
                keys: settingsKeys.nativeText
                onTriggered: root.settingsRequested()
            }

            MenuLine {
            }

            MenuItem {
                text: "Quit Zorvane"
                keys: quitKeys.nativeText
                onTriggered: root.quitRequested()
            }
        }
    }
}
