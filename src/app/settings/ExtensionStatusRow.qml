import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// Whether the badge extension can run in Files; a way to install it for the user, or to its folder.
ColumnLayout {
    id: row
    required property FinderIntegration integration
    readonly property bool isOn: integration.isExtensionEnabled

    spacing: 6
    Layout.fillWidth: true

    RowLayout {
        spacing: 6
        Symbol {
            name: row.isOn ? "checkmark.circle.fill" : "exclamationmark.circle.fill"
            color: row.isOn ? Theme.green : Theme.orange
        }
        Label {
            objectName: "extensionStatusLine"
            text: row.isOn ? PlatformWords.extensionOn : PlatformWords.extensionOff
            color: Theme.primaryText
            font.pixelSize: Theme.bodySize
        }
    }
    SettingsExplanation {
        text: row.isOn ? PlatformWords.extensionOnHelp : PlatformWords.extensionOffHelp
    }
    Button {
        objectName: "extensionButton"
        text: row.isOn ? "Manage…" : "Turn On…"
        onClicked: row.isOn ? row.integration.openExtensionSettings() : row.integration.installExtension()
    }
    SettingsExplanation {
        visible: row.integration.extensionError !== ""
        text: row.integration.extensionError
        color: Theme.orange
    }
}
