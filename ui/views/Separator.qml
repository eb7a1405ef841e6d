import QtQuick

Rectangle {
    width: parent === null ? 0 : parent.width
    height: 1
    color: Theme.separator
}
