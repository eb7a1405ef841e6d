pragma ComponentBehavior: Bound
import QtQuick
import Qt.labs.platform as Native
import Zorvane.Ui

/*
 * The application's menu in the system's menu bar, where its commands go to their usual places. The
 * window itself carries nothing of it.
 */
Item {
    id: root

    required property UpdateController updates
    property QtObject bar: null

    signal aboutRequested
    signal updateCheckRequested
    signal settingsRequested
    signal quitRequested
    signal closed

    // Without a parent it belongs to no window, and is there while none is open.
    Component.onCompleted: bar = menuBar.createObject(null)

    Component {
        id: menuBar

        Native.MenuBar {
            Native.Menu {
                title: "Zorvane"

                Native.MenuItem {
                    text: "About Zorvane"
                    role: Native.MenuItem.AboutRole
                    onTriggered: root.aboutRequested()
                }

                Native.MenuItem {
                    text: "Check for Updates…"
                    role: Native.MenuItem.ApplicationSpecificRole
                    enabled: !root.updates.isChecking
                    onTriggered: root.updateCheckRequested()
                }

                Native.MenuItem {
                    text: "Settings…"
                    role: Native.MenuItem.PreferencesRole
                    shortcut: StandardKey.Preferences // qmllint disable unqualified
                    onTriggered: root.settingsRequested()
                }

                Native.MenuItem {
                    text: "Quit Zorvane"
                    role: Native.MenuItem.QuitRole
                    shortcut: StandardKey.Quit // qmllint disable unqualified
                    onTriggered: root.quitRequested()
                }
            }
        }
    }
}
