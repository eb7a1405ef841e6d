import QtQuick
import Zorvane.Ui

/* A line of text to fill in: its name on the left, the text on the right. */
Item {
    id: root

    required property string name
    required property string text
    property string placeholder

    signal edited(string text)

    height: 26

    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        Accessible.ignored: true
    }

    Rectangle {
        x: 130
        width: parent.width - x
        height: parent.height
        radius: 6
        color: Theme.window
        border.width: 1
        border.color: Theme.cardStroke

        FocusRing {
            visible: input.activeFocus
            radius: 9
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            x: 8
            visible: input.text === ""
            text: root.placeholder
            color: Theme.tertiary
            Accessible.ignored: true
        }

        TextInput {
            id: input

            objectName: root.objectName + "Input"
            anchors.fill: parent
            anchors.leftMargin: 8
            anchors.rightMargin: 8
            verticalAlignment: TextInput.AlignVCenter
            activeFocusOnTab: true
            selectByMouse: true
            clip: true
            text: root.text
            font: Type.body
            color: Theme.primary
            selectionColor: Theme.blueSolid
            selectedTextColor: "#ffffff"
            maximumLength: 1000
            onTextEdited: root.edited(text)

            Accessible.role: Accessible.EditableText
            Accessible.name: root.name
        }
    }
}
