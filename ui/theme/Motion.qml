pragma Singleton
import QtQuick

/*
 * How things come, go and change; durations in milliseconds. Where the user wants less motion,
 * they fade as always, but stay in their places and sizes.
 */
QtObject {
    /* Set by the main window, as the system says. */
    property bool reduced: false

    // Fades.
    readonly property int hover: 100
    readonly property int dropZone: 160
    readonly property int panel: 200
    readonly property int page: 180
    readonly property int modalIn: 180
    readonly property int modalOut: 120

    // Movements.
    readonly property int dropZoneScale: reduced ? 0 : 160
    readonly property int switchKnob: reduced ? 0 : 180
    readonly property int disclosure: reduced ? 0 : 220
    readonly property int pageMark: reduced ? 0 : 180
    readonly property real pageFrom: reduced ? 1 : 0.97
    readonly property real modalFrom: reduced ? 1 : 0.96

    readonly property int spinnerStep: 83
    readonly property int toolTipDelay: 700
}
