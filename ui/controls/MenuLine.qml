import QtQuick

/* What separates the commands of a menu. */
Item {
    width: parent.width
    height: 11

    Accessible.role: Accessible.Separator

    Separator {
        x: 10
        y: 5
        width: parent.width - 20
    }
}
