pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* Header, explanations and the list. */
Item {
    id: root

    required property AppBlockStore store
    required property BlockedAppsModel applications
    required property SystemCommands system
    readonly property int statusKind: store.filterController.status.kind

    ScrollColumn {
        id: page

        anchors.fill: parent
        header: header

        Reveal {
            objectName: "installationPanel"
            width: parent.width
            shown: root.statusKind === FilterStatus.InstallationRequired
            content: InstallationPanel {
                width: page.columnWidth
                onFoldersRequested: root.store.openInstallationFolders()
                onQuitRequested: root.system.quit()
            }
        }

        Reveal {
            objectName: "approvalPanel"
            width: parent.width
            shown: root.statusKind === FilterStatus.AwaitingApproval
            content: ApprovalPanel {
                width: page.columnWidth
                onSettingsRequested: root.system.openSystemSettings()
                onRetryRequested: root.store.refreshProtection()
            }
        }

        ListSection {
            id: list

            width: parent.width
            store: root.store
            applications: root.applications
            viewTop: page.area.contentY - page.columnTop - y
            viewBottom: viewTop + page.area.height
        }
    }

    Header {
        id: header

        width: parent.width
        store: root.store
    }
}
