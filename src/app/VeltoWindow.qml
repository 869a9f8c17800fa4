import QtQuick
import QtQuick.Controls
import Velto

// A window of Velto beside the main one, in the theme's colours. Opening it again brings the one
// that is already there forward.
ApplicationWindow {
    id: window

    color: Theme.windowBackground
    // The controls draw from the palette, so it takes the theme's colours as the main window's does.
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

    function bringForward() {
        window.show()
        window.raise()
        window.requestActivate()
    }
}
