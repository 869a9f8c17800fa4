import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The file manager's side of Velto: the status tag, the badges, and where the extension and the
// add-to-board entry stand.
SettingsGroup {
    id: section
    required property BoardModel board
    property bool isWorking: false
    readonly property FinderIntegration integration: FinderIntegration {}

    title: PlatformWords.fileManagerSection

    Connections {
        target: section.board
        function onTagMirrorSwitched() { section.isWorking = false }
    }

    SettingToggle {
        objectName: "tagMirrorToggle"
        label: PlatformWords.tagMirrorLabel
        explanation: "Writes a tag like “Velto: Waiting” to each tracked folder. This is the only change Velto "
                     + "makes to your files. Turning it off removes the tags it added and leaves your own untouched."
        value: section.board.tagMirror.isEnabled
        switchEnabled: !section.isWorking
        onChanged: on => {
            section.isWorking = true
            section.board.requestSetTagMirrorEnabled(on)
        }
    }
    SettingToggle {
        objectName: "badgeToggle"
        label: PlatformWords.badgeLabel
        explanation: PlatformWords.badgeExplanation
        value: section.board.tagMirror.showsBadgesInFinder
        onChanged: on => section.board.tagMirror.showsBadgesInFinder = on
    }
    ExtensionStatusRow {
        integration: section.integration
    }
    ServicesRow {
        integration: section.integration
    }
    RowLayout {
        objectName: "updatingTagsRow"
        visible: section.isWorking
        spacing: 6
        BusyIndicator {
            running: section.isWorking
            implicitWidth: 16
            implicitHeight: 16
        }
        Label {
            text: "Updating tags…"
            color: Theme.secondaryText
            font.pixelSize: Theme.calloutSize
        }
    }
    RowLayout {
        visible: section.board.tagMirror.lastError !== ""
        spacing: 6
        Symbol {
            name: "exclamationmark.triangle"
            color: Theme.orange
            Layout.alignment: Qt.AlignTop
        }
        SettingsExplanation {
            objectName: "tagMirrorError"
            text: section.board.tagMirror.lastError
            color: Theme.orange
        }
    }
}
