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

    signal aboutRequested
    signal updateCheckRequested
    signal settingsRequested
    signal quitRequested
    signal closed

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
                shortcut: StandardKey.Preferences
                onTriggered: root.settingsRequested()
            }

            Native.MenuItem {
                text: "Quit Zorvane"
                role: Native.MenuItem.QuitRole
                shortcut: StandardKey.Quit
                onTriggered: root.quitRequested()
            }
        }
    }
}
