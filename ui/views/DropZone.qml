import QtQuick
import Zorvane.Ui

/* Where applications are dropped: waiting, under a drag, or reading what was dropped. */
Item {
    id: root

    required property AppBlockStore store
    readonly property bool adding: store.isAddingApplication
    readonly property bool targeted: store.isDropTargeted
    property real highlight: targeted ? 1 : 0

    function refuses(drag: DragEvent): bool {
        return root.adding || !root.enabled || drag.urls.length === 0;
    }

    implicitHeight: 165
    scale: targeted ? 1.01 : 1

    Accessible.role: Accessible.Pane
    Accessible.name: adding ? "Adding application" : "Drop zone for an application"

    Behavior on scale  {
        NumberAnimation {
            duration: Motion.dropZoneScale
            easing.type: Easing.OutCubic
        }
    }

    /* From one colour to the other as far as the highlight has come. */
    function blended(resting: color, highlighted: color): color {
        const part = root.highlight;
        const mixed = (from, to) => from + (to - from) * part;
        return Qt.rgba(mixed(resting.r, highlighted.r), mixed(resting.g, highlighted.g), mixed(resting.b, highlighted.b), mixed(resting.a, highlighted.a));
    }

    Behavior on highlight  {
        NumberAnimation {
            duration: Motion.dropZone
            easing.type: Easing.OutCubic
        }
    }

    Rectangle {
        objectName: "dropZoneFill"
        anchors.fill: parent
        radius: 20
        color: root.blended(Theme.faded(Theme.blue, 0.06), Theme.blueSolid)
    }

    Rectangle {
        objectName: "dropZoneOutline"
        anchors.fill: parent
        visible: root.highlight > 0
        opacity: root.highlight
        radius: 20
        color: "transparent"
        border.width: 1.5
        border.pixelAligned: false
        border.color: Theme.white(0.65)
    }

    DashedFrame {
        objectName: "dropZoneDashes"
        anchors.fill: parent
        visible: root.highlight < 1
        opacity: 1 - root.highlight
        radius: 20
        lineWidth: 1.5
        color: Theme.faded(Theme.blue, 0.45)
    }

    Column {
        objectName: "dropZoneContents"
        anchors.centerIn: parent
        width: parent.width - 40

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: !root.adding
            width: symbol.width
            height: symbol.height

            // The second comes in over the first, which stays until it is covered, so that the
            // symbol never looks through. A symbol in a colour between them would be a new picture
            // in every frame.
            Symbol {
                id: symbol

                objectName: "dropZoneSymbol"
                visible: root.highlight < 1
                name: "app.dashed"
                box: Symbols.box(35)
                stroke: Symbols.light
                color: Theme.blue
            }

            Symbol {
                objectName: "dropZoneHighlightedSymbol"
                opacity: root.highlight
                name: symbol.name
                box: symbol.box
                stroke: symbol.stroke
                color: "#ffffff"
            }
        }

        Lazy {
            anchors.horizontalCenter: parent.horizontalCenter
            active: root.adding
            document: "Spinner"
            properties: ({
                    "objectName": "spinner",
                    "name": "Adding application"
                })
        }

        Item {
            width: 1
            height: root.adding ? 16 : 12
        }

        Label {
            objectName: "dropZoneTitle"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.adding ? "Adding application" : "Drop an app here"
            font: Type.headline
            color: root.blended(Theme.primary, Theme.white(1))
        }

        Item {
            width: 1
            height: 5
        }

        Label {
            objectName: "dropZoneLine"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            lineHeight: 1.08
            text: root.adding ? "Discovering helpers and background processes without blocking the interface." : "Choose an app in Finder to block its new network connections."
            font: Type.subheadline
            color: root.blended(Theme.secondary, Theme.white(1))
        }
    }

    DropArea {
        id: area

        readonly property bool wanted: containsDrag && !root.adding && root.enabled

        anchors.fill: parent
        onWantedChanged: root.store.isDropTargeted = wanted

        // A drag that waits here while an application is being added is welcome when that is done,
        // and it enters only once; so it is let in, and refused as long as need be.
        onEntered: drag => {
            if (drag.urls.length === 0)
                drag.accepted = false;
        }
        onPositionChanged: drag => {
            if (root.refuses(drag))
                drag.accepted = false;
            else
                drag.accept(Qt.CopyAction);
        }
        onDropped: drop => {
            if (root.refuses(drop)) {
                drop.accepted = false;
                return;
            }
            drop.accept(Qt.CopyAction);
            root.store.addApplication(drop.urls[0]);
        }
    }
}
