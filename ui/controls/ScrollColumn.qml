import QtQuick

/*
 * A scrolling column under a header that lies over it: what scrolls away passes beneath the header.
 * Its children are stacked without gaps; they bring their own.
 */
Item {
    id: root

    required property Item header
    default property alias sections: column.data
    readonly property alias area: flickable
    readonly property real columnTop: column.y
    readonly property real inset: 20

    /* Scrolls just as far as needed to have the item in view; its top, if it is too high. */
    function bringIntoView(item: Item): void {
        const margin = 12;
        const top = item.mapToItem(flickable.contentItem, 0, 0).y;
        const bottom = top + item.height;
        const shown = flickable.contentY + root.header.height;
        const highest = top - margin - root.header.height;
        if (top - margin < shown)
            flickable.contentY = Math.max(0, highest);
        else if (bottom + margin > flickable.contentY + flickable.height)
            flickable.contentY = Math.min(flickable.contentHeight - flickable.height, bottom + margin - flickable.height, highest);
    }

    function holds(item: Item): bool {
        for (let at = item; at !== null; at = at.parent) {
            if (at === column)
                return true;
        }
        return false;
    }

    Connections {
        function onActiveFocusItemChanged(): void {
            const item = root.Window.activeFocusItem;
            if (item !== null && root.holds(item))
                root.bringIntoView(item);
        }

        target: root.Window.window
    }

    Flickable {
        id: flickable

        objectName: "page"
        anchors.fill: parent
        contentWidth: width
        contentHeight: column.y + column.height + 20
        boundsBehavior: Flickable.StopAtBounds

        // A press on empty ground is no flick: a mouse scrolls by its wheel.
        MouseArea {
            width: flickable.width
            height: Math.max(flickable.height, flickable.contentHeight)
            preventStealing: true
        }

        Column {
            id: column

            x: root.inset
            y: root.header.height + 16
            width: flickable.width - 2 * root.inset
        }
    }

    ScrollBar {
        area: flickable
        topInset: root.header.height
    }
}
