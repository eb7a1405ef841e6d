import QtQuick

/* A name and its value on one line. */
Item {
    id: root

    required property string name
    required property string value

    height: 42

    Accessible.role: Accessible.StaticText
    Accessible.name: name
    Accessible.description: value

    Label {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        Accessible.ignored: true
    }

    ElidedLabel {
        objectName: "value"
        anchors.left: label.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideRight
        text: root.value
        color: Theme.secondary
        Accessible.ignored: true
    }
}
