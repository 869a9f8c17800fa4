pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The card's key files, picked by hand from its folder: tick them off, look at them, open them.
// Space previews the selected file while the list has the keyboard.
ColumnLayout {
    id: section

    required property CardDetailModel detail

    spacing: 8

    RowLayout {
        Layout.fillWidth: true
        Label {
            text: "Checklist"
            font.pixelSize: 13
            font.weight: Font.DemiBold
            color: Theme.primaryText
            Layout.fillWidth: true
        }
        Label {
            objectName: "checklistProgress"
            visible: section.detail.itemCount > 0
            text: section.detail.doneItemCount + "/" + section.detail.itemCount
            font.pixelSize: 12
            color: Theme.secondaryText
        }
    }

    Label {
        visible: section.detail.itemCount === 0
        text: "Promote files from the folder below to build a checklist."
        font.pixelSize: 12
        color: Theme.tertiaryText
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }

    FocusScope {
        id: list
        objectName: "checklistList"
        visible: section.detail.itemCount > 0
        activeFocusOnTab: true
        implicitHeight: rows.implicitHeight
        Layout.fillWidth: true

        // With nothing selected the key is left to the rest of the window.
        Keys.onSpacePressed: event => {
            if (section.detail.selectedItemID === "") {
                event.accepted = false
                return
            }
            section.detail.previewSelectedItem()
        }

        Column {
            id: rows
            width: parent.width
            spacing: 2
            Repeater {
                model: section.detail.items
                ChecklistRow {
                    width: rows.width
                    detail: section.detail
                    onTakeFocus: list.forceActiveFocus()
                }
            }
        }
    }
}
