import QtQuick
import QtQuick.Controls
import Velto

ApplicationWindow {
    id: window
    required property AppModel app
    required property AppearanceSetting appearance

    title: "Velto"
    width: 1180
    height: 760
    minimumWidth: 900
    minimumHeight: 460
    visible: true
    color: Theme.windowBackground

    // The controls draw from the palette, so it takes the theme's colours too; otherwise buttons
    // and fields would stay light on a dark window.
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

    Binding {
        target: Theme
        property: "dark"
        value: window.appearance.isDark
    }

    // A second launch or a launcher asked for Velto: the window comes forward, as far as the
    // window manager lets it.
    Connections {
        target: window.app
        function onActivationRequested() {
            window.show()
            window.raise()
            window.requestActivate()
        }
    }

    FocusPanel {
        timer: window.app.timer
        settings: window.app.focus
    }

    RootView {
        anchors.fill: parent
        app: window.app
    }
}
