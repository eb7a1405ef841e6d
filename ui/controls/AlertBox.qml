import QtQuick
import Zorvane.Ui

/* What an alert shows. Return and Escape both press its button. */
ModalLayer {
    id: root

    required property Alert alert
    readonly property string message: alert.message
    property string shownMessage: message

    function dismiss(event: KeyEvent): void {
        event.accepted = true;
        if (root.open && !event.isAutoRepeat)
            root.alert.dismissed();
    }

    objectName: "alertBox"
    anchors.fill: parent
    open: alert.open
    boxWidth: 280
    boxHeight: inside.height + 32
    boxRadius: 12
    boxOffset: -20
    shadowBlur: 20
    shadowDown: 12
    shadowStrength: Theme.dark ? 0.60 : 0.35

    Accessible.role: Accessible.AlertMessage
    Accessible.name: alert.title
    Accessible.description: shownMessage

    Keys.onReturnPressed: event => root.dismiss(event)
    Keys.onEnterPressed: event => root.dismiss(event)
    Keys.onEscapePressed: event => root.dismiss(event)
    Keys.onTabPressed: button.forceActiveFocus(Qt.TabFocusReason)
    Keys.onBacktabPressed: button.forceActiveFocus(Qt.BacktabFocusReason)

    // While it fades out, the text that was read stays.
    onMessageChanged: {
        if (message !== "")
            shownMessage = message;
    }

    Column {
        id: inside

        x: 16
        y: 16
        width: parent.width - 32

        OwnIcon {
            objectName: "alertIcon"
            anchors.horizontalCenter: parent.horizontalCenter
            side: 64
        }

        Item {
            width: 1
            height: 14
        }

        Label {
            objectName: "alertTitle"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.alert.title
            font: Type.alertTitle
        }

        Item {
            width: 1
            height: 8
        }

        MessageLabel {
            objectName: "alertMessage"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            lineHeight: 1.15
            // Whatever is in it, the button stays in the window.
            maximumLineCount: 16
            message: root.shownMessage
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
            Accessible.defaultButton: true
            onClicked: root.alert.dismissed()
        }
    }
}
