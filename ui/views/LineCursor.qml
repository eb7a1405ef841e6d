import QtQuick
import Zorvane.Ui

/*
 * The keyboard's place on one of the lines of an unfolded row; it stands in that row. The lines
 * themselves come and go with what is in view.
 */
Item {
    id: root

    required property BlockedAppsModel applications
    /* One of the list's places; null before the first. */
    property var row: null
    property int line: -1
    readonly property bool hasLine: row !== null && row.isShowingComponents && line < row.componentCount
    readonly property var component: hasLine ? lineAt(row.componentsRevision) : null

    function stand(row: Item, line: int): void {
        root.line = line;
        root.row = row;
        root.parent = row;
    }

    /* The revision is named so that the line is asked for again when it changes. */
    function lineAt(revision: int): var {
        return root.applications.components(root.row.index)[root.line];
    }

    objectName: "lineCursor"
    x: 60
    y: row === null ? 0 : row.rowHeight + RowMeasures.linesTop + RowMeasures.line * line
    width: row === null ? 0 : row.width - x - 12
    height: RowMeasures.line
    visible: hasLine

    // Elsewhere the lines tell of themselves.
    Accessible.ignored: !activeFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: component?.name ?? ""
    Accessible.description: component?.kind ?? ""
    Accessible.focusable: true

    // The line has gone: its row has the keyboard.
    onHasLineChanged: {
        if (!hasLine && activeFocus && row !== null)
            row.forceActiveFocus(Qt.OtherFocusReason);
    }

    FocusRing {
        visible: root.activeFocus
        gap: -3
        radius: 8
    }
}
