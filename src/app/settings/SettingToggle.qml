import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// A switch with its label and, below, what it does. The switch always shows `value`; a flip
// only asks for a change through `changed`.
RowLayout {
    id: toggle
    required property string label
    property string explanation
    property bool value
    property alias switchEnabled: control.enabled
    signal changed(bool on)

    spacing: 12
    Layout.fillWidth: true

    ColumnLayout {
        spacing: 2
        Layout.fillWidth: true
        Label {
            text: toggle.label
            color: Theme.primaryText
            font.pixelSize: Theme.bodySize
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        SettingsExplanation {
            visible: toggle.explanation !== ""
            text: toggle.explanation
        }
    }
    Switch {
        id: control
        objectName: toggle.objectName + "Switch"
        checked: toggle.value
        Accessible.name: toggle.label
        Layout.alignment: Qt.AlignTop
        onToggled: {
            toggle.changed(checked)
            checked = Qt.binding(() => toggle.value)
        }
    }
}
