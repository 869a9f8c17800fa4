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
        onSettingsRequested: settingsPlace.open()
        onShortcutsRequested: shortcutsPlace.open()
    }

    // The second key a desktop user tries for a refresh.
    Shortcut {
        sequence: MenuShortcuts.refreshAlso
        enabled: commands.canRefresh
        onActivated: commands.refresh()
    }

    readonly property WindowPlace settingsPlace: WindowPlace {
        owner: window
        properties: ({ app: window.app, appearance: window.appearance })
        component: Component {
            SettingsWindow {}
        }
    }
    readonly property WindowPlace shortcutsPlace: WindowPlace {
        owner: window
        component: Component {
            KeyboardShortcutsWindow {}
        }
    }

    RootView {
        anchors.fill: parent
        app: window.app
    }
}
