import QtQuick

/* Unfolds what belongs to its row. The chevron points down, and the face stays, while it is open. */
Pressable {
    id: root

    required property string symbol
    property bool open: false
    /* From folded, 0, to unfolded, 1. */
    property real unfolding: 0

    // As wide in every row, as long as the count has no more than two digits.
    width: Math.max(164, mark.width + 6 + Math.ceil(label.width) + 6 + chevron.width + 8)
    height: 24
    focusGap: 0
    focusInset: mark.x - 8
    lit: open || hovered

    Accessible.checkable: true
    Accessible.checked: open

    Symbol {
        id: mark

        x: label.x - 6 - width
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        box: 16
        color: Theme.secondary
    }

    Label {
        id: label

        x: chevron.x - 6 - width
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        font: Type.subheadline
        color: Theme.secondary
        Accessible.ignored: true
    }

    Symbol {
        id: chevron

        x: root.width - 8 - width
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.right"
        box: Symbols.box(9)
        stroke: Symbols.bold
        color: Theme.secondary
        rotation: 90 * root.unfolding
    }
}
