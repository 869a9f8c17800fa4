import QtQuick
import QtQuick.Controls
import Velto

// A window of Velto in the theme's colours; the palette follows, so controls are not left light on a
// dark window.
ApplicationWindow {
    id: window

    color: Theme.windowBackground
    palette.window: Theme.windowBackground
    palette.windowText: Theme.primaryText
    palette.base: Theme.controlBackground
    palette.alternateBase: Theme.secondaryFill
    palette.text: Theme.primaryText
    palette.button: Theme.controlBackground
    palette.buttonText: Theme.primaryText
    palette.placeholderText: Theme.secondaryText
    palette.mid: Theme.separator
    palette.highlight: Theme.accent
    palette.highlightedText: "#FFFFFF" // white on the accent in both appearances
    palette.toolTipBase: Theme.controlBackground
    palette.toolTipText: Theme.primaryText

    function bringForward() {
        window.show()
        window.raise()
        window.requestActivate()
    }
}
