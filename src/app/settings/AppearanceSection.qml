import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// Light, dark, or whatever the desktop is.
SettingsGroup {
    id: section
    required property AppearanceSetting setting

    title: "Appearance"

    RowLayout {
        spacing: 12
        Layout.fillWidth: true
        Label {
            text: "Theme"
            color: Theme.primaryText
            font.pixelSize: Theme.bodySize
            Layout.fillWidth: true
        }
        Row {
            spacing: 0
            Repeater {
                model: [{ label: "System", value: "system" }, { label: "Light", value: "light" },
                        { label: "Dark", value: "dark" }]
                delegate: Button {
                    required property var modelData
                    objectName: "theme_" + modelData.value
                    text: modelData.label
                    checkable: true
                    checked: section.setting.preference === modelData.value
                    onClicked: {
                        section.setting.preference = modelData.value
                        checked = Qt.binding(() => section.setting.preference === modelData.value)
                    }
                }
            }
        }
    }
    SettingsExplanation {
        text: "The board's colours are declared for both appearances rather than inverted, so cards sit lighter "
              + "than the column behind them in dark and darker in light. Switching here changes Velto only, not "
              + "the rest of the system."
    }
}
