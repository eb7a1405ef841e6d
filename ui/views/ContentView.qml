pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* Header, explanations and the list. */
FocusScope {
    id: root

    required property AppBlockStore store
    required property BlockedAppsModel applications
    required property SystemCommands system
    readonly property int statusKind: store.filterController.status.kind
    readonly property UpdateController updates: store.updateController

    signal helpRequested

    // First in the order of the keyboard, and over the page.
    Header {
        id: header

        z: 1
        width: parent.width
        store: root.store
        onHelpRequested: root.helpRequested()
    }

    ScrollColumn {
        id: page

        anchors.fill: parent
        header: header

        Reveal {
            objectName: "updatePanel"
            width: parent.width
            shown: root.updates.isBannerVisible && root.updates.availableUpdate !== undefined
            document: "UpdatePanel"
            properties: ({
                    "updates": root.updates
                })
        }

        Reveal {
            objectName: "installationPanel"
            width: parent.width
            shown: root.statusKind === FilterStatus.InstallationRequired
            document: "InstallationPanel"
            properties: ({
                    "store": root.store,
                    "system": root.system
                })
        }

        Reveal {
            objectName: "approvalPanel"
            width: parent.width
            shown: root.statusKind === FilterStatus.AwaitingApproval
            document: "ApprovalPanel"
            properties: ({
                    "store": root.store,
                    "system": root.system
                })
        }

        ListSection {
            id: list

            width: parent.width
            store: root.store
            applications: root.applications
            viewTop: page.area.contentY - page.columnTop - y
            viewBottom: viewTop + page.area.height
            onLineReached: line => page.bringIntoView(line)
        }
    }
}
