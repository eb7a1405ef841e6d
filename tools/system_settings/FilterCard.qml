import QtQuick
import Zorvane.SystemSettings

/* What a filter extension would be told, as it stands now. */
Card {
    id: root

    required property SystemState system

    function stateText(): string {
        if (!system.isFilterConfigured)
            return "Not configured";
        return system.isFilterEnabled ? "On" : "Off";
    }

    title: "Content Filter"

    FactLine {
        objectName: "filterState"
        width: parent.width
        name: "Zorvane"
        value: root.stateText()
    }

    FactLine {
        objectName: "identityCount"
        width: parent.width
        name: "Code identities to block"
        value: root.system.identityCount.toString()
    }

    FactLine {
        objectName: "applicationCount"
        width: parent.width
        name: "Applications to block"
        value: root.system.applicationCount.toString()
    }
}
