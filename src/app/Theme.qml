pragma Singleton
import QtQuick

// Sizes and the two colour sets of Velto; `dark` picks the set every colour resolves against.
QtObject {
    property bool dark: false

    readonly property color windowBackground: dark ? "#1E1E1E" : "#F5F5F7"
    readonly property color primaryText: dark ? "#F2F2F7" : "#1C1C1E"
    readonly property color secondaryText: dark ? "#98989D" : "#6E6E73"

    readonly property int spacing: 12
    readonly property int titleSize: 20
    readonly property int bodySize: 13
}
