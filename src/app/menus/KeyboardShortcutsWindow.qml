import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// Every shortcut of Velto, by menu.
VeltoWindow {
    id: shortcutsWindow
    objectName: "keyboardShortcutsWindow"
    title: "Keyboard Shortcuts"
    width: 460
    height: 620
    minimumWidth: 360
    minimumHeight: 240

    Shortcut {
        sequences: [StandardKey.Close, "Escape"]
        onActivated: shortcutsWindow.close()
    }

    ScrollView {
        anchors.fill: parent
        contentWidth: availableWidth
        ColumnLayout {
            x: 16
            width: parent.width - 32
            spacing: 4
            Repeater {
                model: MenuShortcuts.rows
                delegate: ColumnLayout {
                    id: row
                    required property var modelData
                    required property int index
                    // Each menu's rows under its name.
                    readonly property bool startsMenu:
                        index === 0 || MenuShortcuts.rows[index - 1].menu !== modelData.menu
                    spacing: 4
                    Layout.fillWidth: true
                    Label {
                        visible: row.startsMenu
                        text: row.modelData.menu
                        font.bold: true
                        font.pixelSize: Theme.bodySize
                        color: Theme.primaryText
                        topPadding: 12
                    }
                    RowLayout {
                        spacing: 12
                        Layout.fillWidth: true
                        Label {
                            text: row.modelData.command
                            color: Theme.primaryText
                            font.pixelSize: Theme.bodySize
                            elide: Text.ElideRight
                            Layout.fillWidth: true
                        }
                        Label {
                            text: row.modelData.keys
                            color: Theme.secondaryText
                            font.pixelSize: Theme.bodySize
                        }
                    }
                }
            }
        }
    }
}
