import QtQuick
import Zorvane.Ui

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
    /* What it had disabled can take the focus again. */
    signal closed

    function takeFocus(): void {
        lazy.item?.forceActiveFocus();
    }

    anchors.fill: parent
    z: 50

    onOpenChanged: {
        if (!open)
            afterwards.restart();
    }

    // In the next turn, when everything has followed.
    Timer {
        id: afterwards

        interval: 0
        onTriggered: {
            if (!root.open)
                root.closed();
        }
    }

    Lazy {
        id: lazy

        anchors.fill: parent
        active: root.open
        lingers: true
        document: "AlertBox"
        properties: ({
                "alert": root
            })
    }
}
