import QtQuick
import Zorvane.Ui

/* Says what this system is not. */
Panel {
    id: root

    accent: Theme.orange
    padding: 16
    fillOpacity: 0.09
    strokeOpacity: 0.28

    Column {
        width: parent.width
        spacing: 4

        Label {
            objectName: "nothingBlocked"
            width: parent.width
            text: "Nothing is blocked on this system."
            font: Type.headline
            Accessible.role: Accessible.Heading
        }

        Label {
            width: parent.width
            wrapMode: Text.Wrap
            text: "It stands in for macOS so that Zorvane can be used and tested elsewhere. It keeps what a filter extension would be told, and every program goes on reaching the network."
            font: Type.subheadline
            color: Theme.secondary
        }
    }
}
