import QtQuick

/* A push button: prominent for the one thing to do, bordered for the others. */
Pressable {
    id: root

    property bool prominent: false
    property bool small: false
    property real leastWidth: 0
    readonly property real inset: small ? 12 : 14

    implicitWidth: Math.max(leastWidth, Math.ceil(label.implicitWidth) + 2 * inset)
    implicitHeight: small ? 24 : 28
    width: implicitWidth
    height: implicitHeight
    opacity: available ? 1 : 0.4
    radius: small ? 6 : 7

    ButtonFace {
        look: root.pressed ? "pressed" : "normal"
        prominent: root.prominent
        radius: root.radius
    }

    ButtonFace {
        objectName: "hoverFace"
        visible: opacity > 0 && !root.pressed
        opacity: root.hovered ? 1 : 0
        look: opacity > 0 ? "hovered" : ""
        prominent: root.prominent
        radius: root.radius

        Behavior on opacity  {
            NumberAnimation {
                duration: Motion.hover
            }
        }
    }

    Label {
        id: label

        anchors.centerIn: parent
        anchors.alignWhenCentered: false
        text: root.text
        font: root.prominent ? Type.bodyMedium : Type.body
        color: root.prominent ? "#ffffff" : Theme.primary
        Accessible.ignored: true
    }
}
