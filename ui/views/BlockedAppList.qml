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
            required property int componentCount
            required property int componentsRevision
            property bool isShowingComponents: false
            property real unfolding: isShowingComponents ? 1 : 0
            readonly property real unfoldedHeight: 1 + 4 + 32 * componentCount + 6
            readonly property bool near: y + height > root.viewTop - root.lookahead && y < root.viewBottom + root.lookahead

            width: root.width
            height: 56 + (index > 0 ? 1 : 0) + Math.round(unfolding * unfoldedHeight)

            /* The revision is named so that the lines are asked for again when they change. */
            function lines(revision: int): var {
                return unfolding > 0 ? root.applications.components(index) : [];
            }

            Behavior on unfolding  {
                NumberAnimation {
                    duration: Motion.disclosure
                    easing.type: Easing.InOutQuad
                }
            }

            Lazy {
                active: slot.near || slot.activeFocus

                BlockedAppRow {
                    width: slot.width
                    focus: true
                    first: slot.index === 0
                    name: slot.name
                    identifiers: slot.identifiers
                    icon: slot.icon
                    componentCount: slot.componentCount
                    lines: slot.lines(slot.componentsRevision)
                    unfolded: slot.isShowingComponents
                    unfolding: slot.unfolding
                    viewTop: root.viewTop - slot.y
                    viewBottom: root.viewBottom - slot.y
                    onUnfoldRequested: unfold => slot.isShowingComponents = unfold
                    onRemoveRequested: root.removeRow(slot.index, activeFocus)
                    Keys.onUpPressed: root.focusRow(slot.index - 1)
                    Keys.onDownPressed: root.focusRow(slot.index + 1)
                }
            }
        }
    }
}
