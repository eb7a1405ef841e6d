import QtQuick

/* One page of the guide: a large symbol, a title and a paragraph. */
Item {
    id: root

    required property string symbol
    required property string title
    required property string message

    objectName: "onboardingPage"

    Rectangle {
        id: square

        objectName: "onboardingSquare"
        anchors.horizontalCenter: parent.horizontalCenter
        width: 100
        height: 100
        radius: 26
        color: Theme.faded(Theme.blue, 0.1)

        Symbol {
            objectName: "onboardingSymbol"
            anchors.centerIn: parent
            name: root.symbol
            box: 60
            stroke: Symbols.medium
            color: Theme.blue
        }
    }

    Label {
        id: heading

        objectName: "onboardingTitle"
        anchors.top: square.bottom
        anchors.topMargin: 26
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: root.title
        font: Type.title
        Accessible.role: Accessible.Heading
    }

    Label {
        objectName: "onboardingMessage"
        anchors.top: heading.bottom
        anchors.topMargin: 10
        anchors.horizontalCenter: parent.horizontalCenter
        width: 420
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        lineHeight: 1.2
        text: root.message
        color: Theme.secondary
    }
}
