pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The tags of the sheet: how many no card carries, where tags come from, and a row for each tag.
ColumnLayout {
    id: section

    required property BoardModel model
    required property TaxonomyUsage usage

    signal deletionRequested(var tag)

    spacing: 8

    RowLayout {
        Layout.fillWidth: true

        Label {
            text: "Tags"
            color: Theme.primaryText
            font.pixelSize: 11 // the subheadline font
            font.weight: Font.DemiBold
            Layout.fillWidth: true
        }
        Label {
            objectName: "unusedTagCount"
            visible: section.usage.unusedTagCount > 0
            text: section.usage.unusedTagCount + " unused"
            color: Theme.secondaryText
            font.pixelSize: 11 // the caption font
        }
    }

    Note {
        text: "Tags are made on a card: select one, then use “Add a tag” in the panel on the right. This is where they are recoloured, counted and deleted — click the swatch to change a colour, or right-click the tag on a card."
    }

    Repeater {
        model: section.model.tagList

        ColumnLayout {
            id: tagEntry
            required property var modelData
            required property int index
            spacing: 6
            Layout.fillWidth: true

            Rectangle {
                visible: tagEntry.index > 0
                implicitHeight: 1
                color: Theme.separator
                Layout.fillWidth: true
            }
            TagRow {
                tag: tagEntry.modelData
                cardCount: section.usage.tagCardCounts[tagEntry.modelData.id] ?? 0
                Layout.fillWidth: true
                onRecolor: color => section.model.requestRecolorTag(tagEntry.modelData.id, color)
                onDeleteRequested: section.deletionRequested(tagEntry.modelData)
            }
        }
    }

    Note {
        objectName: "noTagsNote"
        visible: section.model.tagList.length === 0
        text: "No tags yet."
    }

    component Note: Label {
        color: Theme.secondaryText
        font.pixelSize: 11 // small text
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
