import QtQuick

/* A push button: prominent for the one thing to do, bordered for the others. */
Pressable {
    id: root

    property bool prominent: false
    property bool small: false
    property real leastWidth: 0
    readonly property real radius: small ? 6 : 7
    readonly property real inset: small ? 12 : 14

    implicitWidth: Math.max(leastWidth, Math.ceil(label.implicitWidth) + 2 * inset)
    implicitHeight: small ? 24 : 28
    width: implicitWidth
    height: implicitHeight
    opacity: available ? 1 : 0.4
    focusRadius: radius + 4

    Image {
        readonly property int shade: 1

        width: root.width
        height: root.height + shade
        source: `image://face/${root.prominent ? "prominent" : "bordered"}?dark=${Theme.dark ? 1 : 0}&height=${root.height}&radius=${root.radius}&state=${root.pressed ? "pressed" : root.hovered ? "hovered" : "normal"}`
        sourceSize.width: width
        sourceSize.height: height
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
