import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// How long a focus session aims for, and whether the focus panel names its card.
SettingsGroup {
    id: section
    required property FocusSettings settings

    title: "Focus"

    RowLayout {
        spacing: 12
        Layout.fillWidth: true
        Label {
            text: "Session length"
            color: Theme.primaryText
            font.pixelSize: Theme.bodySize
            Layout.fillWidth: true
        }
        ComboBox {
            objectName: "sessionLengthPicker"
            model: section.settings.selectableTargets
            currentIndex: section.settings.selectableTargets.indexOf(section.settings.targetSeconds)
            displayText: SessionTimeText.duration(section.settings.targetSeconds)
            Accessible.name: "Session length"
            delegate: ItemDelegate {
                required property int modelData
                required property int index
                objectName: "sessionLength_" + modelData
                width: ListView.view.width
                text: SessionTimeText.duration(modelData)
                highlighted: modelData === section.settings.targetSeconds
            }
            onActivated: index => section.settings.targetSeconds = section.settings.selectableTargets[index]
        }
    }
    SettingsExplanation {
        text: "What a focus session aims for. The timer keeps running past it rather than cutting you off "
              + "mid-thought — the target decides whether a session is recorded as completed, not when it stops."
    }
    SettingToggle {
        objectName: "cardNameToggle"
        label: "Show card name in the focus panel"
        explanation: "The focus panel floats above other apps, including over a full-screen presentation, so what it "
                     + "says is visible in a screen share or a recording. Its window title is always just “Focus”; "
                     + "this switches off the card name inside it too."
        value: section.settings.showsCardNameInFocusPanel
        onChanged: on => section.settings.showsCardNameInFocusPanel = on
    }
}
