pragma ComponentBehavior: Bound
import QtQuick

/* Twelve spokes that take turns: something is going on. */
Item {
    id: root

    /* What is going on, for assistive technology. */
    required property string name
    property color color: Theme.blue
    property int step: 0

    width: 32
    height: 32

    Accessible.role: Accessible.ProgressBar
    Accessible.name: name

    Timer {
        interval: Motion.spinnerStep
        repeat: true
        running: root.visible
        onTriggered: root.step = (root.step + 1) % 12
    }

    Repeater {
        model: 12

        Rectangle {
            id: spoke

            required property int index

            x: (root.width - width) / 2
            y: 1
            width: 3
            height: 8
            radius: 1
            color: root.color
            antialiasing: true
            opacity: 0.2 + 0.8 * ((spoke.index - root.step + 12) % 12) / 11
            transform: Rotation {
                origin.x: 1.5
                origin.y: 15
                angle: spoke.index * 30
            }
        }
    }
}
