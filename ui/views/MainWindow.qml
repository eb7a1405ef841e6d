pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* The one main window. What it shows and does is the store's; it is shown by its owner. */
Window {
    id: root

    required property AppBlockStore store
    required property BlockedAppsModel applications
    required property SystemCommands system
    required property Onboarding onboarding
    required property OtherWindows otherWindows

    title: "Zorvane"
    color: Theme.window
    width: 760
    height: 650 + menu.height
    minimumWidth: 680
    minimumHeight: 560 + menu.height

    Binding {
        target: Motion
        property: "reduced"
        value: root.system.reducesMotion
    }

    /* Whoever had the keyboard before a box came up has it again. */
    function giveFocusBack(): void {
        if (alert.open)
            alert.takeFocus();
        else if (guide.item !== null && root.onboarding.showingOnboarding)
            guide.item.forceActiveFocus();
        else
            page.forceActiveFocus();
    }

    // In the next turn, when what the guide had disabled can take the focus again.
    Timer {
        id: afterGuide

        interval: 0
        onTriggered: root.giveFocusBack()
    }

    Shortcut {
        sequences: [StandardKey.Close] // qmllint disable unqualified
        onActivated: root.close()
    }

    FocusScope {
        anchors.fill: parent
        focus: true

        Keys.forwardTo: [menu]

        ApplicationMenu {
            id: menu

            width: parent.width
            updates: root.store.updateController
            onAboutRequested: root.otherWindows.showAbout()
            onUpdateCheckRequested: root.store.checkForUpdates(true)
            onSettingsRequested: root.otherWindows.showSettings()
            onQuitRequested: root.system.quit()
            onClosed: root.giveFocusBack()
        }

        // What goes over the content leaves the menu bar alone.
        Item {
            id: body

            anchors.fill: parent
            anchors.topMargin: menu.height

            ContentView {
                id: page

                anchors.fill: parent
                enabled: !alert.open && !root.onboarding.showingOnboarding
                store: root.store
                applications: root.applications
                system: root.system
                onHelpRequested: root.onboarding.show()
            }

            Connections {
                function onShowingOnboardingChanged(): void {
                    afterGuide.restart();
                }

                target: root.onboarding
            }

            Lazy {
                id: guide

                anchors.fill: parent
                z: 40
                enabled: !alert.open
                active: root.onboarding.showingOnboarding
                lingers: true
                document: "OnboardingView"
                properties: ({
                        "onboarding": root.onboarding
                    })
            }

            Alert {
                id: alert

                objectName: "alert"
                title: "Zorvane"
                message: root.store.alertMessage
                onDismissed: root.store.dismissAlert()
                onClosed: root.giveFocusBack()
            }
        }
    }
}
