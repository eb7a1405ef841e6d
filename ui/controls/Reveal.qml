import QtQuick
import Zorvane.Ui

/*
 * A place in a column that is there or not. What it shows is built only while it shows, and comes
 * and goes by fading and growing, together with the gap beneath it.
 */
Item {
    id: root

    required property bool shown
    default property alias content: inside.content
    property real gap: 12
    property real progress: shown ? 1 : 0

    enabled: shown
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

    Lazy {
        id: inside

        width: root.width
        active: root.progress > 0
    }
}
