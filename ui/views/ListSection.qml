pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* The drop zone and, under it, the blocked applications. */
Column {
    id: root

    required property AppBlockStore store
    required property BlockedAppsModel applications
    /* The part of this section that is in view, in its own coordinates. */
    required property real viewTop
    required property real viewBottom
    /* A line in it has been reached by the keyboard. */
    signal lineReached(Item line)

    readonly property real rowsTop: viewTop - card.y
    readonly property real rowsBottom: viewBottom - card.y
    /* Until the saved list has been read nothing is said of it: it would have to be taken back. */
    readonly property bool known: store.hasLoadedApplications
    readonly property bool failed: store.filterController.status.kind === FilterStatus.Failed

    DropZone {
        objectName: "dropZone"
        width: parent.width
        height: implicitHeight
        store: root.store
    }

    Item {
        width: 1
        height: 18
    }

    Item {
        objectName: "listHeading"
        width: parent.width
        height: 22

        Label {
            id: title

            x: 2
            anchors.verticalCenter: parent.verticalCenter
            text: "Blocked apps"
            font: Type.headline
            Accessible.role: Accessible.Heading
        }

        CountBadge {
            objectName: "countBadge"
            anchors.left: title.right
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            visible: root.known
            count: root.applications.count
        }
    }

    Item {
        width: 1
        height: 8
    }

    Reveal {
        objectName: "failureLabel"
        width: parent.width
        gap: 10
        shown: root.failed
        document: "FailureLabel"
        properties: ({
                "filter": root.store.filterController
            })
    }

    Rectangle {
        id: card

        objectName: "listCard"
        width: parent.width
        height: root.applications.count === 0 ? RowMeasures.empty : rows.implicitHeight
        // Not invisible: it keeps its place, which tells the rows what of them is in view.
        opacity: root.known ? 1 : 0
        radius: 12
        color: Theme.card

        Lazy {
            width: parent.width
            active: root.known && root.applications.count === 0
            document: "EmptyList"
        }

        Lazy {
            id: rows

            width: parent.width
            active: root.applications.count > 0
            document: "BlockedAppList"
            properties: ({
                    "section": root
                })
        }

        Rectangle {
            objectName: "cardEdge"
            anchors.fill: parent
            radius: parent.radius
            color: "transparent"
            border.width: 1
            border.color: Theme.cardStroke
        }
    }
}
