pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/*
 * What all buttons share: hover, press, keyboard, focus and the action for assistive technology.
 * Never takes the focus by a click, so whoever has it got it by the keyboard and shows its ring.
 *
 * A window disables all its controls behind an alert; `available` is the control's own state, and
 * the only one that shows.
 */
Item {
    id: root

    property bool available: true
    property string text
    property string toolTip
    property real radius: 6
    /* From the control to its ring. */
    property real focusGap: 1
    /* How much of the control, from its left, the ring leaves out. */
    property real focusInset: 0
    readonly property bool hovered: mouse.containsMouse && enabled
    readonly property bool pressed: mouse.pressed && mouse.containsMouse && enabled

    signal clicked

    function press(): void {
        if (root.enabled && root.visible)
            root.clicked();
    }

    function pressByKey(event: KeyEvent): void {
        event.accepted = true;
        if (!event.isAutoRepeat)
            root.press();
    }

    enabled: available
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text !== "" ? text : toolTip
    Accessible.description: text !== "" ? toolTip : ""
    Accessible.focusable: true
    Accessible.pressed: pressed
    Accessible.onPressAction: root.press()

    Keys.onSpacePressed: event => root.pressByKey(event)
    Keys.onReturnPressed: event => root.pressByKey(event)
    Keys.onEnterPressed: event => root.pressByKey(event)

    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onClicked: root.press()
    }

    FocusRing {
        visible: root.activeFocus
        anchors.leftMargin: root.focusInset - (gap + 3)
        radius: root.radius + gap + 3
        gap: root.focusGap
    }

    Lazy {
        active: root.toolTip !== "" && root.hovered && !root.pressed

        ToolTip {
            text: root.toolTip
            target: root
        }
    }
}
