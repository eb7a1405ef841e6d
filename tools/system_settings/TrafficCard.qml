import QtQuick
import Zorvane.Ui
import Zorvane.SystemSettings

/* A made-up connection: what the filter extension would decide, and its record. */
Card {
    id: root

    required property Traffic traffic

    title: "Traffic"

    Field {
        objectName: "signingIdentifier"
        width: parent.width
        name: "Signing identifier"
        placeholder: "com.example.tool"
        text: root.traffic.signingIdentifier
        onEdited: text => root.traffic.signingIdentifier = text
    }

    Field {
        objectName: "teamIdentifier"
        width: parent.width
        name: "Team"
        placeholder: "none"
        text: root.traffic.teamIdentifier
        onEdited: text => root.traffic.teamIdentifier = text
    }

    Field {
        objectName: "sourceIdentifier"
        width: parent.width
        name: "On behalf of"
        placeholder: "no other application"
        text: root.traffic.sourceIdentifier
        onEdited: text => root.traffic.sourceIdentifier = text
    }

    Field {
        objectName: "sourceTeamIdentifier"
        width: parent.width
        name: "Its team"
        placeholder: "none"
        text: root.traffic.sourceTeamIdentifier
        onEdited: text => root.traffic.sourceTeamIdentifier = text
    }

    Field {
        objectName: "executablePath"
        width: parent.width
        name: "Executable"
        placeholder: "unknown"
        text: root.traffic.executablePath
        onEdited: text => root.traffic.executablePath = text
    }

    Label {
        objectName: "verdict"
        width: parent.width
        visible: text !== ""
        text: root.traffic.verdict
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        font: Type.subheadline
        color: root.traffic.isBlocked ? Theme.redText : Theme.secondary
    }

    Row {
        anchors.right: parent.right
        spacing: 8

        Button {
            objectName: "chooseNext"
            text: "Next Listed"
            available: root.traffic.hasListed
            onClicked: root.traffic.chooseNext()
        }

        Button {
            objectName: "connect"
            text: "Connect"
            prominent: true
            available: root.traffic.canConnect
            onClicked: root.traffic.openConnection()
        }
    }

    Label {
        objectName: "trafficNote"
        width: parent.width
        visible: text !== ""
        wrapMode: Text.Wrap
        text: root.traffic.note
        font: Type.subheadline
        color: Theme.secondary
    }
}
