import QtQuick
import Zorvane.Ui

/* The switch for protection. Where it cannot be used for the place of the program, a tap says so. */
Item {
    id: root

    required property AppBlockStore store
    property string name: "Protection"
    readonly property int kind: store.filterController.status.kind

    // What is hidden would keep the keyboard.
    onKindChanged: {
        if (root.kind !== FilterStatus.InstallationRequired && layer.focus)
            toggle.focus = true;
    }

    width: toggle.width
    height: toggle.height

    Switch {
        id: toggle

        objectName: "protectionSwitch"
        text: root.name
        checked: root.store.isProtectionEnabled
        available: root.kind === FilterStatus.Inactive || root.kind === FilterStatus.Enabled || root.kind === FilterStatus.Failed
        onToggleRequested: on => root.store.setProtectionEnabled(on)
    }

    // A disabled control gets no taps of its own.
    Pressable {
        id: layer

        objectName: "explanationLayer"
        anchors.fill: parent
        visible: root.kind === FilterStatus.InstallationRequired
        text: "Explain why protection is unavailable"
        radius: height / 2
        onClicked: root.store.explainProtectionUnavailable()
    }
}
