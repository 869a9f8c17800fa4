import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The settings form: the file manager, focus and appearance, top to bottom. Until start-up has
// made the board, its place says so.
ColumnLayout {
    id: view
    required property AppModel app
    required property AppearanceSetting appearance

    spacing: 18

    Label {
        objectName: "settingsStartingLine"
        visible: view.app.board === null
        text: "Velto is still starting up."
        color: Theme.secondaryText
        font.pixelSize: Theme.bodySize
    }
    Loader {
        active: view.app.board !== null
        visible: active
        Layout.fillWidth: true
        sourceComponent: FinderSection {
            board: view.app.board
        }
    }
    FocusSection {
        settings: view.app.focus
    }
    AppearanceSection {
        setting: view.appearance
    }
}
