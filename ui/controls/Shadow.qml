import QtQuick

/*
 * The soft shadow of a rounded box, below its parent. It is a picture, because the software
 * renderer cannot blur.
 */
BorderImage {
    id: root

    required property real blur
    required property real down
    required property real strength
    required property real radius
    readonly property int margin: Math.ceil(2 * blur)
    readonly property int corner: margin + Math.ceil(Math.max(radius, 1.5 * blur))

    objectName: "shadow"
    anchors.fill: parent
    anchors.margins: -margin
    anchors.topMargin: -margin + down
    anchors.bottomMargin: -margin - down
    z: -1
    opacity: strength
    source: `image://shadow/box?blur=${blur}&radius=${radius}&margin=${margin}&corner=${corner}`
    border.left: corner
    border.right: corner
    border.top: corner
    border.bottom: corner
}
