pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The top level of the card's folder, from which files are added to the checklist. There is no
// going below the top level, and nothing is added without a click.
ColumnLayout {
    id: section

    required property CardDetailModel detail

    readonly property bool isEmpty: entryRows.count === 0

    spacing: 8

    component Note: Label {
        font.pixelSize: 12
        color: Theme.tertiaryText
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }

    Label {
        text: "Folder"
        font.pixelSize: 13
        font.weight: Font.DemiBold
        color: Theme.primaryText
    }
    Note {
        objectName: "folderUnreadableNote"
        visible: section.detail.didFindFolderUnreadable
        text: "This folder cannot be read right now."
    }
    Note {
        objectName: "folderEmptyNote"
        visible: !section.detail.didFindFolderUnreadable && section.isEmpty
        text: "This folder is empty."
    }
    Column {
        visible: !section.detail.didFindFolderUnreadable && !section.isEmpty
        spacing: 1
        Layout.fillWidth: true
        Repeater {
            id: entryRows
            model: section.detail.entries
            FolderEntryRow {
                width: parent ? parent.width : 0
                detail: section.detail
            }
        }
    }
    Note {
        visible: !section.detail.didFindFolderUnreadable && !section.isEmpty
        text: "Only the top level is shown, and nothing is added to the checklist until you add it."
        font.pixelSize: 11
    }
}
