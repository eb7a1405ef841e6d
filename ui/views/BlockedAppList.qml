pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/*
 * The list. Every row has its place here, where the keyboard and assistive technology find it; what
 * a row shows is built only near the visible part.
 */
SlotColumn {
    id: root

    required property ListSection section
    readonly property BlockedAppsModel applications: section.applications
    /* The place that has the focus, or in which it is. */
    readonly property Item focusedSlot: slotOf(Window.activeFocusItem)
    readonly property int focusedIndex: (focusedSlot as ColumnSlot)?.index ?? -2

    function slotOf(item: Item): Item {
        for (let at = item; at !== null; at = at.parent) {
            if (at.parent === root)
                return at;
        }
        return null;
    }

    function focusedRow(): int {
        let row = repeater.count - 1;
        while (row >= 0 && repeater.itemAt(row) !== root.focusedSlot)
            --row;
        return row;
    }

    /* The row at this height, or the nearest. */
    function rowAt(y: real): int {
        let row = 0;
        while (row < repeater.count - 1 && repeater.itemAt(row + 1).y <= y)
            ++row;
        return row;
    }

    function focusRow(row: int): void {
        const nearest = Math.max(0, Math.min(row, repeater.count - 1));
        repeater.itemAt(nearest).forceActiveFocus(Qt.TabFocusReason);
    }

    function focusLine(row: int, line: int): void {
        cursor.stand(repeater.itemAt(row), line);
        cursor.forceActiveFocus(Qt.TabFocusReason);
        root.section.lineReached(cursor);
    }

    /* A row's place with all that it has; to the repeater it is any item. */
    function slotAt(row: int): var {
        return repeater.itemAt(row);
    }

    /* How many lines of the row the keyboard can go to. */
    function linesOf(row: int): int {
        const slot = slotAt(row);
        return slot.isShowingComponents ? slot.componentCount : 0;
    }

    /* The row or the line at this height, or the nearest. */
    function focusAt(y: real): void {
        const row = rowAt(y);
        const slot = slotAt(row);
        const line = Math.floor((y - slot.y - slot.rowHeight - RowMeasures.linesTop) / RowMeasures.line);
        const last = linesOf(row) - 1;
        if (Math.min(line, last) >= 0)
            focusLine(row, Math.min(line, last));
        else
            focusRow(row);
    }

    /* By one line up or down: rows, and the lines of those that are unfolded. */
    function step(row: int, by: int): void {
        const line = (cursor.activeFocus ? cursor.line : -1) + by;
        if (line >= 0 && line < linesOf(row))
            focusLine(row, line);
        else if (line < -1 && row > 0 && linesOf(row - 1) > 0)
            focusLine(row - 1, linesOf(row - 1) - 1);
        else if (by < 0 || row < repeater.count - 1)
            focusRow(line < -1 ? row - 1 : line < 0 ? row : row + 1);
    }

    /* A row has gone with the focus in it: the one that takes its place has it next. */
    function passFocusOn(row: int): void {
        if (repeater.count > 0)
            focusRow(row);
        else
            root.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason);
    }

    function takeKey(event: KeyEvent): void {
        const row = focusedRow();
        const page = 0.8 * (root.viewBottom - root.viewTop);
        const y = root.focusedSlot.y + (cursor.activeFocus ? cursor.y : 0);
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Up:
            step(row, -1);
            break;
        case Qt.Key_Down:
            step(row, 1);
            break;
        case Qt.Key_PageUp:
            focusAt(y - page);
            break;
        case Qt.Key_PageDown:
            focusAt(y + page);
            break;
        case Qt.Key_Home:
            focusRow(0);
            break;
        case Qt.Key_End:
            focusRow(repeater.count - 1);
            break;
        case Qt.Key_Delete:
        case Qt.Key_Backspace:
            // A key that is held down removes one application, not all that follow.
            if (!event.isAutoRepeat)
                root.applications.remove(row);
            break;
        default:
            event.accepted = false;
        }
    }

    objectName: "blockedApps"
    width: section.width
    viewTop: section.rowsTop
    viewBottom: section.rowsBottom

    Accessible.role: Accessible.List
    Accessible.name: "Blocked apps"

    Keys.onPressed: event => root.takeKey(event)

    LineCursor {
        id: cursor

        parent: root.parent
        applications: root.applications
    }

    Repeater {
        id: repeater

        model: root.applications
        onItemRemoved: (row, item) => {
            if (item === root.focusedSlot)
                root.passFocusOn(row);
        }

        ColumnSlot {
            id: slot

            required index
            required property string name
            required property string identifiers
            required property url icon
            required property int componentCount
            required property int componentsRevision
            property bool isShowingComponents: false
            property real unfolding: isShowingComponents ? 1 : 0
            /* What is unfolded by how much changes in every frame; the lines need not. */
            readonly property bool showsLines: unfolding > 0
            readonly property real unfoldedHeight: RowMeasures.linesHeight(componentCount)
            readonly property real rowHeight: RowMeasures.row + (index > 0 ? RowMeasures.divider : 0)

            width: root.width
            height: rowHeight + Math.round(unfolding * unfoldedHeight)
            activeFocusOnTab: true

            Accessible.role: Accessible.ListItem
            Accessible.name: name
            Accessible.description: identifiers
            Accessible.focusable: true

            /* The revision is named so that the lines are asked for again when they change. */
            function lines(revision: int): var {
                return showsLines ? root.applications.components(index) : [];
            }

            Behavior on unfolding  {
                NumberAnimation {
                    duration: Motion.disclosure
                    easing.type: Easing.InOutQuad
                }
            }

            Lazy {
                // Those beside the focused one, too: their buttons are next for the keyboard.
                active: slot.near || Math.abs(slot.index - root.focusedIndex) <= 1

                BlockedAppRow {
                    width: slot.width
                    focused: slot.activeFocus
                    first: slot.index === 0
                    name: slot.name
                    identifiers: slot.identifiers
                    icon: slot.icon
                    componentCount: slot.componentCount
                    lines: slot.lines(slot.componentsRevision)
                    unfolded: slot.isShowingComponents
                    unfolding: slot.unfolding
                    focusedLine: cursor.activeFocus && cursor.row === slot ? cursor.line : -1
                    viewTop: root.viewTop - slot.y
                    viewBottom: root.viewBottom - slot.y
                    onUnfoldRequested: unfold => slot.isShowingComponents = unfold
                    onRemoveRequested: root.applications.remove(slot.index)
                }
            }
        }
    }
}
