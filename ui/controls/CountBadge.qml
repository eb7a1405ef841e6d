import QtQuick

/* A number on a faint capsule. */
Rectangle {
    id: root

    required property int count

    width: Math.ceil(label.implicitWidth) + 18
    height: Math.ceil(label.implicitHeight) + 8
    radius: height / 2
    color: Theme.quaternary

    Label {
        id: label

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.alignWhenCentered: false
        y: (parent.height - height) / 2 + 0.5
        text: root.count.toString()
        font: Type.captionBold
        color: Theme.secondary
    }
}
