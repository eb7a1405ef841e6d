pragma Singleton
import QtQuick

/* How long things take to move, in milliseconds. */
QtObject {
    readonly property int hover: 100
    readonly property int dropZone: 160
    readonly property int switchKnob: 180
    readonly property int panel: 200
    readonly property int disclosure: 220
    readonly property int page: 180
    readonly property int modalIn: 180
    readonly property int modalOut: 120
    readonly property int spinnerStep: 83
    readonly property int toolTipDelay: 700
}
