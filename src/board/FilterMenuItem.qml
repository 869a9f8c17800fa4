import QtQuick
import QtQuick.Controls
import Velto

// A line of the filter menu with a symbol of the application's set, or with the dot of a project
// or tag colour.
MenuItem {
    id: item

    // A name the user gave, shown as typed: an ampersand in it marks no mnemonic.
    property string label: ""
    property string symbol: ""
    // A stored project or tag colour; the dot takes its partner in the dark appearance.
    property string dotColor: ""

    readonly property color resolvedDot: {
        const resolved = PaletteColors.resolve(item.dotColor, Theme.dark)
        return resolved.valid ? resolved : Theme.secondaryText
    }

    text: item.label.replace(/&/g, "&&")
    // The menu draws icons from files, so the symbol is named by the file of its SVG.
    icon.source: item.dotColor !== "" ? "qrc:/qt/qml/Velto/app/symbols/circle.fill.svg"
                 : item.symbol !== "" ? "qrc:/qt/qml/Velto/app/symbols/" + item.symbol + ".svg" : ""
    icon.color: item.dotColor !== "" ? item.resolvedDot : Theme.secondaryText
    icon.width: 14
    icon.height: 14
}
