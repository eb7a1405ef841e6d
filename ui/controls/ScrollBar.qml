import QtQuick

/* The thin bar over a scrolling area: shows while it moves or the pointer is near. */
Item {
    id: root

    required property Flickable area
    required property real topInset
    readonly property real range: area.contentHeight - area.height
    readonly property bool needed: range > 0
    readonly property bool active: area.moving || mouse.containsMouse || mouse.pressed || shown.running
    readonly property real travel: mouse.height - handle.height

    function scrollTo(y: real): void {
        root.area.contentY = Math.max(0, Math.min(1, y / root.travel)) * root.range;
    }

    anchors.right: parent.right
    width: 12
    height: parent.height
    visible: needed

    Connections {
        function onContentYChanged(): void {
            shown.restart();
        }

        target: root.area
    }

    Timer {
        id: shown

        interval: 900
    }

    MouseArea {
        id: mouse

        property real grip: 0

        y: root.topInset + 2
        width: parent.width
        height: parent.height - y - 2
        hoverEnabled: true
        preventStealing: true
        onPressed: event => {
            const inside = event.y >= handle.y && event.y <= handle.y + handle.height;
            grip = inside ? event.y - handle.y : handle.height / 2;
            root.scrollTo(event.y - grip);
        }
        onPositionChanged: event => {
            if (pressed)
                root.scrollTo(event.y - grip);
        }

        Rectangle {
            id: handle

            anchors.right: parent.right
            anchors.rightMargin: 3
            y: root.needed ? root.area.contentY / root.range * root.travel : 0
            width: 6
            height: root.needed ? Math.max(32, parent.height * root.area.height / root.area.contentHeight) : 0
            radius: 3
            color: Theme.tertiary
            opacity: root.active ? 1 : 0

            Behavior on opacity  {
                NumberAnimation {
                    duration: Motion.panel
                }
            }
        }
    }
}
