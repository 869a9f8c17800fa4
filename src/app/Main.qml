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

    // The one place that opens the other windows; the bar's buttons, the shortcuts and the menus
    // all come here. Each window is made once, so opening it again brings it forward.
    function openAnalytics() {
        analyticsWindow.bringForward()
    }
    function openDiagnostics() {
        diagnosticsWindow.bringForward()
    }

    AnalyticsWindow {
        id: analyticsWindow
        app: window.app
    }
    DiagnosticsWindow {
        id: diagnosticsWindow
        app: window.app
    }

    Shortcut {
        sequences: ["Ctrl+Shift+1"]
        context: Qt.ApplicationShortcut
        onActivated: window.openAnalytics()
    }
    Shortcut {
        sequences: ["Ctrl+Shift+D"]
        context: Qt.ApplicationShortcut
        onActivated: window.openDiagnostics()
    }

    RootView {
        anchors.fill: parent
        app: window.app
        onAnalyticsRequested: window.openAnalytics()
        onDiagnosticsRequested: window.openDiagnostics()
    }
}
