import QtQuick
import Zorvane.Ui

/*
 * The rows of the list. Only those near the visible part are built; the others keep their place.
 * Arrow keys go from row to row.
 */
Column {
    id: root

    required property BlockedAppsModel applications
    required property real viewTop
    required property real viewBottom
    readonly property real lookahead: 200

    function focusRow(index: int): void {
        const slot = repeater.itemAt(index) as Loader;
        if (slot !== null && slot.item !== null)
            slot.item.forceActiveFocus(Qt.OtherFocusReason);
    }

    /* The focus goes on to the row that takes the removed one's place. */
    function removeRow(index: int, hadFocus: bool): void {
        root.applications.remove(index);
        if (hadFocus && root.applications.count > 0)
            focusRow(Math.min(index, root.applications.count - 1));
    }

    Accessible.role: Accessible.List
    Accessible.name: "Blocked apps"

    Repeater {
        id: repeater

        model: root.applications

        Loader {
            id: slot

            required property int index
            required property string name
            required property string identifiers
            required property url icon
            readonly property bool near: y + height > root.viewTop - root.lookahead && y < root.viewBottom + root.lookahead

            width: root.width
            height: item === null ? 56 + (index > 0 ? 1 : 0) : (item as Item).implicitHeight
            active: near || activeFocus
            sourceComponent: BlockedAppRow {
                first: slot.index === 0
                name: slot.name
                identifiers: slot.identifiers
                icon: slot.icon
                onRemoveRequested: root.removeRow(slot.index, activeFocus)
                Keys.onUpPressed: root.focusRow(slot.index - 1)
                Keys.onDownPressed: root.focusRow(slot.index + 1)
            }
        }
    }
}
