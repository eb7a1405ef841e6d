import QtQuick

/* A symbol without a frame that can be pressed. Its tool tip is its name. */
Pressable {
    id: root

    required property string symbol
    property int fontSize: 16
    property real stroke: Symbols.medium
    property int side: 28
    /* Where the symbol is faint, it comes forward under the pointer. */
    property bool risesOnHover: false

    width: side
    height: side
    opacity: available ? 1 : 0.4
    focusGap: 0
    lit: hovered

    Symbol {
        anchors.centerIn: parent
        anchors.alignWhenCentered: Screen.devicePixelRatio === 1
        name: root.symbol
        box: Symbols.box(root.fontSize)
        stroke: root.stroke
        color: root.pressed || (root.risesOnHover && root.hovered) ? Theme.primary : Theme.secondary
    }
}
