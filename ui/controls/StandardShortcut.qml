import QtQuick

/* The keys of a standard command, in every window of the program. */
Shortcut {
    id: root

    /* One of StandardKey. */
    required property int command
    /* For platforms that have no keys of their own for the command. */
    required property string otherwise
    readonly property Shortcut platformKeys: Shortcut {
        enabled: false
        sequence: root.command
    }

    context: Qt.ApplicationShortcut
    sequence: platformKeys.portableText !== "" ? platformKeys.portableText : otherwise
}
