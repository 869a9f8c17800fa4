import QtQuick
import QtQuick.Controls
import Velto

// The settings window: 480 wide, as tall as its form.
VeltoWindow {
    id: settingsWindow
    required property AppModel app
    required property AppearanceSetting appearance

    objectName: "settingsWindow"
    title: "Settings"
    width: 480
    height: Math.min(form.implicitHeight + 40, Screen.desktopAvailableHeight - 80)
    minimumWidth: 480
    maximumWidth: 480

    Shortcut {
        sequences: [StandardKey.Close, "Escape"]
        onActivated: settingsWindow.close()
    }

    ScrollView {
        anchors.fill: parent
        contentWidth: availableWidth
        SettingsView {
            id: form
            app: settingsWindow.app
            appearance: settingsWindow.appearance
            x: 20
            y: 20
            width: parent.width - 40
        }
    }
}
