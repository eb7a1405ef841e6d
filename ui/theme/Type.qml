pragma Singleton
import QtQuick

/*
 * The type styles. macOS has a system font of its own; elsewhere Inter, or the default sans where
 * that is not installed.
 */
QtObject {
    id: root

    readonly property string family: Qt.platform.os === "osx" ? ".AppleSystemUIFont" : "Inter"
    // The same design, drawn for large sizes.
    readonly property string displayFamily: Qt.platform.os === "osx" ? family : "Inter Display"

    readonly property font title: style(22, Font.Bold, -0.2, displayFamily)
    readonly property font app: style(17, Font.DemiBold, -0.2, family)
    readonly property font headline: style(13, Font.DemiBold, -0.08, family)
    readonly property font alertTitle: style(13, Font.Bold, -0.08, family)
    readonly property font body: style(13, Font.Normal, -0.08, family)
    readonly property font bodyMedium: style(13, Font.Medium, -0.08, family)
    readonly property font callout: style(12, Font.Normal, 0, family)
    readonly property font subheadline: style(11, Font.Normal, 0, family)
    readonly property font subheadlineMedium: style(11, Font.Medium, 0, family)
    readonly property font caption: style(10, Font.Normal, 0.08, family)
    readonly property font captionMedium: style(10, Font.Medium, 0.08, family)
    readonly property font captionBold: style(10, Font.Bold, 0.08, family)

    /*
     * Without cosmetic shaping, whose tables would take over a megabyte for the weights of Inter.
     * What has to be shaped to be right is shaped all the same.
     */
    function style(size: int, weight: int, tracking: real, design: string): font {
        return Qt.font({
                "family": design,
                "pixelSize": size,
                "weight": weight,
                "letterSpacing": tracking,
                "hintingPreference": Font.PreferNoHinting,
                "preferShaping": Qt.platform.os === "osx"
            });
    }
}
