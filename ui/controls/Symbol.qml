import QtQuick

/* One of the product's symbols in a colour and a weight. Decoration: its owner has the name. */
Image {
    id: root

    required property string name
    property color color: Theme.primary
    property real stroke: Symbols.regular
    property int box: 24

    source: `image://symbol/${name}?color=${encodeURIComponent(color.toString())}&stroke=${stroke}`
    sourceSize.width: box
    sourceSize.height: box
    width: box
    height: box
}
