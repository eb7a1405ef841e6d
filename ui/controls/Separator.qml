import QtQuick

/* A thin line between two things of a group. */
Rectangle {
    height: 1
    color: Theme.separator
}
