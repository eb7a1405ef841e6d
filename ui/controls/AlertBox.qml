import QtQuick

/* The alert itself over the dimmed window. Return and Escape both press its button. */
FocusScope {
    id: root

    required property bool open
    required property string title
    required property string message
    property string shownMessage: message

    signal dismissed

    function dismiss(event: KeyEvent): void {
        event.accepted = true;
        if (root.open && !event.isAutoRepeat)
            root.dismissed();
    }

    enabled: open
    opacity: 0

    Accessible.role: Accessible.AlertMessage
    Accessible.name: title
    Accessible.description: shownMessage

    Keys.onReturnPressed: event => root.dismiss(event)
    Keys.onEnterPressed: event => root.dismiss(event)
    Keys.onEscapePressed: event => root.dismiss(event)
    Keys.onTabPressed: button.forceActiveFocus(Qt.TabFocusReason)
    Keys.onBacktabPressed: button.forceActiveFocus(Qt.BacktabFocusReason)

    Component.onCompleted: {
        forceActiveFocus();
        opacity = Qt.binding(() => root.open ? 1 : 0);
    }

    // While it fades out, the text that was read stays.
    onMessageChanged: {
        if (message !== "")
            shownMessage = message;
    }
    onOpenChanged: {
        if (open)
            forceActiveFocus();
    }

    Behavior on opacity  {
        NumberAnimation {
            duration: root.open ? Motion.modalIn : Motion.modalOut
            easing.type: Easing.OutCubic
        }
    }

    Rectangle {
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

        anchors.centerIn: parent
        anchors.verticalCenterOffset: -20
        width: 280
        height: content.height + 32
        radius: 12
        color: Theme.sheet
        border.width: Theme.sheetEdgeWidth
        border.color: Theme.sheetEdge
        scale: 0.96 + 0.04 * root.opacity

        Shadow {
            blur: 20
            down: 12
            strength: Theme.dark ? 0.60 : 0.35
            radius: box.radius
        }

        Column {
            id: content

            x: 16
            y: 16
            width: parent.width - 32

            OwnIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                side: 64
            }

            Item {
                width: 1
                height: 14
            }

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: root.title
                font: Type.alertTitle
            }

            Item {
                width: 1
                height: 8
            }

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                lineHeight: 1.15
                text: root.shownMessage
                font: Type.subheadline
            }

            Item {
                width: 1
                height: 16
            }

            Button {
                id: button

                width: parent.width
                prominent: true
                text: "OK"
                onClicked: root.dismissed()
            }
        }
    }
}
