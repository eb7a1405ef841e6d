import QtQuick
import Zorvane.Ui

/*
 * The application's menu where a window carries its own menu bar: F10 or Alt opens it, the keys of
 * its commands work in every window.
 */
Rectangle {
    id: root

    required property UpdateController updates
    readonly property Item title: opener
    readonly property string name: label.text
    readonly property string settingsKeys: settingsShortcut.nativeText
    readonly property string quitKeys: quitShortcut.nativeText
    property bool open: false
    /* Alt went down, and nothing has happened since. */
    property bool altAlone: false

    signal aboutRequested
    signal updateCheckRequested
    signal settingsRequested
    signal quitRequested
    /* The menu has given the keyboard back. */
    signal closed
    /* A press on the title goes on to this place of the window, or ends there. */
    signal draggedTo(point place)
    signal releasedAt(point place)

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
        id: settingsShortcut

        command: StandardKey.Preferences // qmllint disable unqualified
        otherwise: "Ctrl+,"
        onActivated: root.settingsRequested()
    }

    StandardShortcut {
        id: quitShortcut

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
        Accessible.onPressAction: {
            if (root.open)
                root.close();
            else
                root.open = true;
        }

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
                    root.draggedTo(place(event));
            }
            onReleased: event => root.releasedAt(place(event))
        }
    }

    Lazy {
        active: root.open
        document: "CommandMenu"
        properties: ({
                "bar": root
            })
    }
}
