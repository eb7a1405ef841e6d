import QtQuick
import Zorvane.Ui

/* What all buttons share, with what assistive technology knows of them. */
PressArea {
    id: root

    property string text

    Accessible.role: Accessible.Button
    Accessible.name: text !== "" ? text : toolTip
    Accessible.description: text !== "" ? toolTip : ""
    Accessible.focusable: true
    Accessible.pressed: pressed
    Accessible.onPressAction: root.press()
}
