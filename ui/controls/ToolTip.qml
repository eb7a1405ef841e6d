import QtQuick

/* A line of explanation beneath what the pointer rests on. Lives in the window, over everything. */
Rectangle {
    id: root

    required property string text
    required property Item target

    function place(): void {
        const window = root.parent;
        const below = root.target.mapToItem(window, root.target.width / 2, root.target.height + 6);
        x = Math.round(Math.max(8, Math.min(below.x - width / 2, window.width - width - 8)));
        const fits = below.y + height + 4 <= window.height;
        y = Math.round(fits ? below.y : below.y - root.target.height - 12 - height);
    }

    parent: target.Window.contentItem
    z: 100
    width: label.width + 16
    height: label.height + 8
    radius: 5
    color: Theme.sheet
    border.width: 1
    border.color: Theme.sheetEdge
    opacity: 0

    Accessible.role: Accessible.ToolTip
    Accessible.name: text

    Component.onCompleted: place()

    SequentialAnimation on opacity {
        PauseAnimation {
            duration: Motion.toolTipDelay
        }

        NumberAnimation {
            to: 1
            duration: Motion.hover
        }
    }

    Shadow {
        blur: 8
        down: 3
        strength: 0.25
        radius: root.radius
    }

    Label {
        id: label

        x: 8
        y: 4
        width: Math.min(implicitWidth, 360)
        wrapMode: Text.Wrap
        text: root.text
        font: Type.subheadline
        Accessible.ignored: true
    }
}
