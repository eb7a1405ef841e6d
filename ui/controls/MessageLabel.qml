import QtQuick

/*
 * A message with a name in it, which may be any text: of an endless one the middle is left out, so
 * that what is said of it can be read. Assistive technology is told the whole.
 */
Label {
    id: root

    required property string message
    readonly property int longest: 300
    readonly property int mostLines: 6

    function legible(message: string): string {
        const lines = message.split(/[\n\r\u2028\u2029]/).length;
        if (message.length <= root.longest && lines <= root.mostLines)
            return message;
        const line = message.replace(/[\n\r\u2028\u2029]+/g, " ");
        if (line.length <= root.longest)
            return line;
        // No half of a character is left at either side.
        const begin = line.slice(0, 200).replace(/[\ud800-\udbff]$/, "");
        const end = line.slice(-99).replace(/^[\udc00-\udfff]/, "");
        return begin + "…" + end;
    }

    wrapMode: Text.Wrap
    // For letters that are very wide.
    elide: Text.ElideRight
    text: root.legible(root.message)

    Accessible.name: root.message
}
