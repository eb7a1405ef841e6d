import QtQuick

/*
 * An on/off switch. It shows what it is given and asks for changes: the state is its owner's.
 */
Pressable {
    id: root

    required property bool checked

    signal toggleRequested(bool on)

    width: 38
    height: 22
    radius: height / 2

    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: root.press()

    onClicked: toggleRequested(!checked)

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: "transparent"
        border.width: 0.5
        border.pixelAligned: false
        border.color: Theme.switchEdge
    }

    Rectangle {
        objectName: "track"
        anchors.fill: parent
        anchors.margins: 0.5
        radius: height / 2
        color: root.checked ? (root.available ? Theme.blue : Theme.switchDisabledOn) : (root.available ? Theme.switchOff : Theme.switchDisabled)

        Behavior on color  {
            ColorAnimation {
                duration: Motion.switchKnob
            }
        }
    }

    Rectangle {
        id: knob

        objectName: "knob"
        x: root.checked ? root.width - width - 1.5 : 1.5
        y: 1.5
        width: 19
        height: 19
        radius: height / 2
        color: root.available ? Theme.knob : Theme.knobDisabled

        Behavior on x  {
            NumberAnimation {
                duration: Motion.switchKnob
                easing.type: Easing.InOutQuad
            }
        }

        Shadow {
            blur: 3
            down: 1
            strength: root.available ? 0.45 : 0.20
            radius: knob.radius
        }
    }
}
