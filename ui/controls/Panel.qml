import QtQuick

/* The tinted box around an explanation. As high as what it holds. */
Rectangle {
    id: root

    required property color accent
    required property real padding
    required property real fillOpacity
    required property real strokeOpacity
    default property alias content: inside.data

    // Whole points: what follows must stand at its stated distance.
    height: Math.ceil(inside.childrenRect.height + 2 * padding)
    radius: 16
    color: Theme.faded(accent, fillOpacity)
    border.width: 1
    border.color: Theme.faded(accent, strokeOpacity)

    Item {
        id: inside

        anchors.fill: parent
        anchors.margins: root.padding
    }
}
