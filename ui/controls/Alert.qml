import QtQuick

/*
 * A message that has to be dismissed before anything else. Shown while its text is not empty; built
 * only then.
 */
Item {
    id: root

    required property string title
    required property string message
    readonly property bool open: message !== ""

    signal dismissed

    anchors.fill: parent
    z: 50

    Loader {
        id: loader

        anchors.fill: parent
        active: root.open || (item !== null && (item as Item).opacity > 0)
        sourceComponent: AlertBox {
            open: root.open
            title: root.title
            message: root.message
            onDismissed: root.dismissed()
        }
    }
}
