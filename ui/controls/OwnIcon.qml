import QtQuick

/* The product's own icon, with rounded corners: the system's, where it has one. */
Image {
    id: root

    required property int side
    property real radius: side * 0.23

    source: `image://application/own?side=${side}&radius=${radius}`
    sourceSize.width: side
    sourceSize.height: side
    width: side
    height: side

    Accessible.ignored: true
}
