import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// Where "Add to Velto Board" appears in the file managers, and a way to put it there for this
// account when no package did.
ColumnLayout {
    id: row
    required property FinderIntegration integration

    spacing: 6
    Layout.fillWidth: true

    Label {
        text: "Add to Velto Board"
        color: Theme.primaryText
        font.pixelSize: Theme.bodySize
    }
    SettingsExplanation {
        text: PlatformWords.actionsHelp
    }
    RowLayout {
        visible: row.integration.areActionsInstalled
        spacing: 6
        Symbol {
            name: "checkmark.circle.fill"
            color: Theme.green
        }
        Label {
            objectName: "actionsInstalledLine"
            text: PlatformWords.actionsInstalled
            color: Theme.primaryText
            font.pixelSize: Theme.bodySize
        }
    }
    SettingsExplanation {
        visible: !row.integration.areActionsInstalled
        text: PlatformWords.actionsInstallHelp
    }
    Button {
        objectName: "installActionsButton"
        visible: !row.integration.areActionsInstalled
        text: PlatformWords.installActions
        onClicked: row.integration.installActions()
    }
    SettingsExplanation {
        visible: row.integration.actionsError !== ""
        text: row.integration.actionsError
        color: Theme.orange
    }
}
