import QtQuick

/* What a push button is painted with in one of its looks; nothing while it has none. */
Image {
    id: root

    required property string look
    required property bool prominent
    required property real radius
    readonly property int shade: 1

    width: parent.width
    height: parent.height + shade
    source: look === "" ? "" : `image://face/${prominent ? "prominent" : "bordered"}?dark=${Theme.dark ? 1 : 0}&height=${height - shade}&radius=${radius}&state=${look}`
    sourceSize.width: width
    sourceSize.height: height
}
