import QtQuick

/* Text in one of the type styles. Never markup: names come from other people's bundles. */
Text {
    color: Theme.primary
    font: Type.body
    renderType: Text.QtRendering
    textFormat: Text.PlainText

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
