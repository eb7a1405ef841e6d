import QtQuick
import Zorvane.Ui

/*
 * A place in a column that is there or not. What it shows is built only while it shows, and comes
 * and goes by fading and growing, together with the gap beneath it. If it goes while it has the
 * focus, that goes to whatever comes before it.
 */
FocusScope {
    id: root

    required property bool shown
    default property alias content: inside.content
    /* In place of content, as of Lazy. */
    property alias document: inside.document
    property alias properties: inside.properties
    property real gap: 12
    property real progress: shown ? 1 : 0
    readonly property real growth: Motion.reduced ? Math.ceil(progress) : progress

    function followShown(): void {
        if (!root.shown && root.activeFocus)
            root.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason);
        root.enabled = root.shown;
    }

    visible: progress > 0
    height: visible ? Math.round(growth * (inside.height + gap)) : 0
    opacity: progress
    clip: growth < 1

    Component.onCompleted: followShown()
    onShownChanged: afterChange.restart()

    // In the next turn, when everything else has followed and may take the focus. Until then it
    // stays enabled, because a disabled item has no focus to pass on.
    Timer {
        id: afterChange

        interval: 0
        onTriggered: root.followShown()
    }

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
