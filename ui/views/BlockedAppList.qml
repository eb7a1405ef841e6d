pragma ComponentBehavior: Bound
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
    readonly property real lookahead: 60

    function focusRow(index: int): void {
        const slot = repeater.itemAt(index);
        if (slot !== null)
            slot.forceActiveFocus(Qt.TabFocusReason);
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

        FocusScope {
            id: slot

            required property int index
            required property string name
            required property string identifiers
            required property url icon
            readonly property bool near: y + height > root.viewTop - root.lookahead && y < root.viewBottom + root.lookahead

            width: root.width
            height: 56 + (index > 0 ? 1 : 0)

            Lazy {
                active: slot.near || slot.activeFocus

                BlockedAppRow {
                    width: slot.width
                    focus: true
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
}
