pragma ComponentBehavior: Bound
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
    property bool fading: false

    signal dismissed

    anchors.fill: parent
    z: 50

    Repeater {
        model: root.open || root.fading ? 1 : 0

        AlertBox {
            anchors.fill: parent
            open: root.open
            onOpacityChanged: root.fading = opacity > 0
            title: root.title
            message: root.message
            onDismissed: root.dismissed()
        }
    }
}
