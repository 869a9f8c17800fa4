import QtQuick
import QtQuick.Controls
import Velto

VeltoWindow {
    id: window
    required property AppModel app
    required property AppearanceSetting appearance

    title: "Velto"
    width: 1180
    height: 760
    minimumWidth: 900
    minimumHeight: 460
    visible: true

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

    VeltoCommands {
        id: commands
        app: window.app
    }

    menuBar: VeltoMenuBar {
        commands: commands
        onSettingsRequested: settingsWindow.bringForward()
        onShortcutsRequested: shortcutsWindow.bringForward()
        onAnalyticsRequested: window.openAnalytics()
        onDiagnosticsRequested: window.openDiagnostics()
    }

    // The second key a desktop user tries for a refresh.
    Shortcut {
        sequence: MenuShortcuts.refreshAlso
        enabled: commands.canRefresh
        onActivated: commands.refresh()
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
    SettingsWindow {
        id: settingsWindow
        app: window.app
        appearance: window.appearance
    }
    KeyboardShortcutsWindow {
        id: shortcutsWindow
    }

    RootView {
        anchors.fill: parent
        app: window.app
        onAnalyticsRequested: window.openAnalytics()
        onDiagnosticsRequested: window.openDiagnostics()
    }
}
