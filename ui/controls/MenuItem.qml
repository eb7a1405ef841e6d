import QtQuick

/* One command of a menu. The one with the focus is the one that is chosen. */
Item {
    id: root

    required property string text
    /* The keys that do the same, as people read them. */
    property string keys
    property bool available: true

    signal triggered
    /* Assistive technology asks for it; the menu knows what comes first. */
    signal chosen

    width: parent.width
    height: 24
    enabled: available

    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.description: keys
    Accessible.focusable: true
    Accessible.onPressAction: root.chosen()

    Rectangle {
        anchors.fill: parent
        radius: 5
        color: Theme.blueSolid
        visible: root.activeFocus
    }

    Label {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        color: root.activeFocus ? Theme.white(1) : Theme.primary
        opacity: root.available ? 1 : 0.4
        Accessible.ignored: true
    }

    Label {
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.keys
        color: root.activeFocus ? Theme.white(1) : Theme.secondary
        opacity: root.available ? 1 : 0.4
        Accessible.ignored: true
    }
}
