import QtQuick

/* Text in one of the type styles. Never markup: names come from other people's bundles. */
Text {
    color: Theme.primary
    font: Type.body
    renderType: Text.QtRendering
    textFormat: Text.PlainText
    // Also of texts that are read from the right: they keep their place in the layout.
    horizontalAlignment: Text.AlignLeft

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
