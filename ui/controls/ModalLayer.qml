pragma ComponentBehavior: Bound
import QtQuick

/*
 * Something that has to be answered before anything else: a box over the dimmed window. It fades in
 * and out; its owner keeps it until it has faded out.
 */
FocusScope {
    id: root

    required property bool open
    property real boxWidth
    property real boxHeight
    property real boxRadius
    property real boxOffset: 0
    property real shadowBlur
    property real shadowDown
    property real shadowStrength
    default property alias content: box.data

    /*
     * Assistive technology can ask for the focus for something disabled, and then nobody has it
     * but what this is in.
     */
    function takeFocusBack(): void {
        let at = root.parent;
        while (at !== null && at !== root.Window.activeFocusItem)
            at = at.parent;
        if (at !== null && root.enabled)
            root.forceActiveFocus();
    }

    enabled: open
    opacity: 0

    Component.onCompleted: {
        forceActiveFocus();
        opacity = Qt.binding(() => root.open ? 1 : 0);
    }
    onOpenChanged: {
        if (open)
            forceActiveFocus();
    }
    onActiveFocusChanged: {
        if (!activeFocus)
            afterLoss.restart();
    }

    // In the next turn, when whoever else wants it has it.
    Timer {
        id: afterLoss

        interval: 0
        onTriggered: root.takeFocusBack()
    }

    Behavior on opacity  {
        NumberAnimation {
            duration: root.open ? Motion.modalIn : Motion.modalOut
            easing.type: Easing.OutCubic
        }
    }

    Rectangle {
        objectName: "dim"
        anchors.fill: parent
        color: Theme.dim

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            preventStealing: true
            onWheel: wheel => wheel.accepted = true
        }
    }

    Rectangle {
        id: box

        objectName: "box"
        anchors.centerIn: parent
        anchors.verticalCenterOffset: root.boxOffset
        width: root.boxWidth
        height: root.boxHeight
        radius: root.boxRadius
        color: Theme.sheet
        scale: Motion.modalFrom + (1 - Motion.modalFrom) * root.opacity

        Shadow {
            blur: root.shadowBlur
            down: root.shadowDown
            strength: root.shadowStrength
            radius: root.boxRadius
        }

        Rectangle {
            objectName: "edge"
            anchors.fill: parent
            radius: parent.radius
            color: "transparent"
            border.width: Theme.sheetEdgeWidth
            border.pixelAligned: false
            border.color: Theme.sheetEdge
        }
    }
}
