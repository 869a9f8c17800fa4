import QtQuick
import Velto

// A dot in a project or tag colour. The stored colour is its light value; the dark appearance
// swaps in the palette's partner, and a text that is no colour shows as the secondary colour.
Item {
    id: swatch

    required property string hex
    required property real size
    property bool bordered: false

    readonly property color resolvedColor: {
        const resolved = PaletteColors.resolve(hex, Theme.dark)
        return resolved.valid ? resolved : Theme.secondaryText
    }

    implicitWidth: size
    implicitHeight: size

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: swatch.resolvedColor
    }

    // The hairline is centred on the dot's edge, half over the fill and half outside it.
    Rectangle {
        visible: swatch.bordered
        anchors.fill: parent
        anchors.margins: -border.width / 2
        radius: width / 2
        color: "transparent"
        border.width: 0.5
        border.color: Theme.separator
    }
}
