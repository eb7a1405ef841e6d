import QtQuick

/* A line of explanation beneath what the pointer rests on. Shows in the window, over everything. */
Item {
    id: root

    required property string text
    required property Item target

    Accessible.role: Accessible.ToolTip
    Accessible.name: text

    Rectangle {
        id: box

        function place(): void {
            // A window that is closing has nowhere to show it.
            if (parent === null)
                return;
            const below = root.target.mapToItem(parent, root.target.width / 2, root.target.height + 6);
            const fits = below.y + height + 4 <= parent.height;
            x = Math.round(Math.max(8, Math.min(below.x - width / 2, parent.width - width - 8)));
            y = Math.round(fits ? below.y : below.y - root.target.height - 12 - height);
        }

        objectName: "toolTip"
        parent: root.Window.contentItem
        z: 100
        width: label.width + 16
        height: label.height + 8
        radius: 5
        color: Theme.sheet
        border.width: 1
        border.color: Theme.sheetEdge
        opacity: 0

        Component.onCompleted: place()
        onWidthChanged: place()
        onHeightChanged: place()

        Connections {
            function onWidthChanged(): void {
                box.place();
            }

            function onHeightChanged(): void {
                box.place();
            }

            target: box.parent
        }

        SequentialAnimation {
            running: true

            PauseAnimation {
                duration: Motion.toolTipDelay
            }

            NumberAnimation {
                target: box
                property: "opacity"
                to: 1
                duration: Motion.hover
            }
        }

        Shadow {
            blur: 8
            down: 3
            strength: 0.25
            radius: box.radius
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
}
