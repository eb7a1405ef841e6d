pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/*
 * The commands under a title of a menu bar, as MenuItem and Separator children, over the whole
 * window: a press beside them closes the menu and does nothing else. Its owner builds it while it
 * is open, and closes it when asked to.
 */
Item {
    id: root

    required property Item title
    required property string name
    default property alias entries: column.data

    signal closed

    function commandAt(place: point): MenuItem {
        const inside = column.mapFromItem(null, place.x, place.y);
        return column.childAt(inside.x, inside.y) as MenuItem;
    }

    /* The pointer is at this place of the window. */
    function pointAt(place: point): void {
        const command = root.commandAt(place);
        if (command !== null && command.available)
            command.forceActiveFocus(Qt.MouseFocusReason);
        else
            layer.forceActiveFocus(Qt.MouseFocusReason);
    }

    /* The pointer was released there: on a command that means it. */
    function releaseAt(place: point): void {
        const command = root.commandAt(place);
        if (command !== null)
            root.run(command);
    }

    function run(command: MenuItem): void {
        if (!command.available)
            return;
        // First, so that what the command opens has the focus in the end.
        root.closed();
        command.triggered();
    }

    function takeKey(event: KeyEvent): void {
        const commands = Array.from(column.children).filter(each => each instanceof MenuItem && each.available);
        const chosen = commands.findIndex(each => each.activeFocus);
        const last = commands.length - 1;
        const choose = at => commands[at].forceActiveFocus(Qt.OtherFocusReason);
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Down:
            choose(chosen < last ? chosen + 1 : 0);
            break;
        case Qt.Key_Up:
            choose(chosen > 0 ? chosen - 1 : last);
            break;
        case Qt.Key_Home:
            choose(0);
            break;
        case Qt.Key_End:
            choose(last);
            break;
        case Qt.Key_Return:
        case Qt.Key_Enter:
        case Qt.Key_Space:
            if (chosen >= 0 && !event.isAutoRepeat)
                root.run(commands[chosen]);
            break;
        case Qt.Key_Escape:
        case Qt.Key_F10:
            root.closed();
        }
    }

    Component.onCompleted: {
        for (const command of Array.from(column.children).filter(each => each instanceof MenuItem))
            command.chosen.connect(() => root.run(command));
    }

    FocusScope {
        id: layer

        objectName: "menu"
        parent: root.Window.contentItem
        anchors.fill: parent
        z: 90

        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.name

        Component.onCompleted: forceActiveFocus(Qt.PopupFocusReason)
        Keys.onPressed: event => root.takeKey(event)
        onActiveFocusChanged: {
            if (!activeFocus)
                root.closed();
        }

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            preventStealing: true
            acceptedButtons: Qt.AllButtons
            onWheel: wheel => wheel.accepted = true
            onPositionChanged: mouse => root.pointAt(Qt.point(mouse.x, mouse.y))
            onPressed: mouse => {
                if (!box.contains(mapToItem(box, mouse.x, mouse.y)))
                    root.closed();
            }
            onReleased: mouse => root.releaseAt(Qt.point(mouse.x, mouse.y))
        }

        Rectangle {
            id: box

            x: root.title.mapToItem(layer, 0, 0).x
            y: root.title.mapToItem(layer, 0, root.title.height).y + 2
            width: 250
            height: column.height + 10
            radius: 8
            color: Theme.sheet
            border.width: 1
            border.color: Theme.sheetEdge

            Shadow {
                blur: 12
                down: 6
                strength: Theme.dark ? 0.55 : 0.28
                radius: box.radius
            }

            Column {
                id: column

                x: 5
                y: 5
                width: parent.width - 10
            }
        }
    }
}
