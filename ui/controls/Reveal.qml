import QtQuick

/*
 * A place in a column that is there or not. What it shows is built only while it shows, and comes
 * and goes by fading and growing, together with the gap beneath it.
 */
Item {
    id: root

    required property bool shown
    required property Component content
    property real gap: 12
    property real progress: shown ? 1 : 0

    visible: progress > 0
    height: visible ? Math.round(progress * (inside.height + gap)) : 0
    opacity: progress
    clip: progress < 1

    Behavior on progress  {
        NumberAnimation {
            duration: Motion.panel
            easing.type: Easing.OutCubic
        }
    }

    Column {
        id: inside

        width: root.width

        Repeater {
            model: root.progress > 0 ? 1 : 0
            delegate: root.content
        }
    }
}
