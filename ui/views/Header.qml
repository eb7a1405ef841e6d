import QtQuick
import Zorvane.Ui

/* The product's name and the protection switch, on a thin material that the page passes under. */
Item {
    id: root

    required property AppBlockStore store
    // macOS draws its window buttons over the content.
    readonly property real buttonsInset: Qt.platform.os === "osx" ? 18 : 0

    signal helpRequested

    objectName: "header"
    height: 74 + buttonsInset

    // There is no blur to hide what passes beneath, so the material is all but closed behind the
    // texts and opens below them.
    Rectangle {
        objectName: "headerMaterial"
        anchors.fill: parent
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Theme.faded(Theme.header, 0.985)
            }

            GradientStop {
                position: 0.74
                color: Theme.faded(Theme.header, 0.985)
            }

            GradientStop {
                position: 1
                color: Theme.faded(Theme.header, 0.86)
            }
        }

        MouseArea {
            anchors.fill: parent
        }
    }

    Rectangle {
        objectName: "headerLine"
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.headerLine
    }

    Item {
        anchors.fill: parent
        anchors.leftMargin: 20
        anchors.rightMargin: 20
        anchors.topMargin: 14 + root.buttonsInset
        anchors.bottomMargin: 14

        OwnIcon {
            id: icon

            objectName: "ownIcon"
            side: 46
            radius: 11
        }

        Column {
            anchors.left: icon.right
            anchors.leftMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Label {
                objectName: "headerTitle"
                text: "Zorvane"
                font: Type.app
                Accessible.role: Accessible.Heading
            }

            Label {
                text: "Control which apps can access the network"
                font: Type.subheadline
                color: Theme.secondary
            }
        }

        PlainSymbolButton {
            anchors.right: protection.left
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            symbol: "questionmark.circle"
            toolTip: "Show getting started"
            onClicked: root.helpRequested()
        }

        ProtectionControl {
            id: protection

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            store: root.store
        }
    }
}
