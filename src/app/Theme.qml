pragma Singleton
import QtQuick

// Sizes and the two colour sets of Velto; `dark` picks the set every colour resolves against.
QtObject {
    property bool dark: false

    // The one of a pair of colours that fits the current appearance.
    function pick(darkColor, lightColor) {
        return dark ? darkColor : lightColor
    }

    readonly property color windowBackground: pick("#1E1E1E", "#F5F5F7")
    readonly property color primaryText: pick("#F2F2F7", "#1C1C1E")
    readonly property color secondaryText: pick("#98989D", "#6E6E73")
    readonly property color tertiaryText: pick("#636366", "#AEAEB2")
    readonly property color separator: pick("#38383A", "#C6C6C8")
    readonly property color secondaryFill: pick("#2C2C2E", "#E5E5EA")
    readonly property color quaternaryFill: pick("#1FFFFFFF", "#0D000000")
    readonly property color orange: pick("#FF9F0A", "#FF9500")
    readonly property color red: pick("#FF453A", "#FF3B30")
    readonly property color green: pick("#30D158", "#34C759")
    readonly property color accent: pick("#0A84FF", "#007AFF")
    readonly property color controlBackground: pick("#3A3A3C", "#FFFFFF")

    readonly property int spacing: 12
    readonly property int titleSize: 20
    readonly property int bodySize: 13
    readonly property int headlineSize: 13
    readonly property int calloutSize: 12
    readonly property int captionSize: 10
}
