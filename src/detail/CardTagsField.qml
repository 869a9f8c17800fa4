pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The card's tags as chips, and the field that adds one by name.
ColumnLayout {
    id: tagsField

    required property BoardModel board
    required property var card

    readonly property string cardID: tagsField.card.cardID ?? ""
    readonly property var tags: tagsField.card.tags ?? []

    spacing: 6

    function addTag() {
        const name = newTag.text.trim()
        if (name === "")
            return
        newTag.clear()
        tagsField.board.requestAddTag(tagsField.cardID, name)
    }

    Label {
        text: "Tags"
        font.pixelSize: 12
        color: Theme.secondaryText
    }

    FlowLayout {
        objectName: "detailTagChips"
        visible: tagsField.tags.length > 0
        spacing: 4
        Layout.fillWidth: true

        Repeater {
            model: tagsField.tags
            DetailTagChip {
                required property var modelData
                tagID: modelData.id
                name: modelData.name
                color: modelData.color
                onRemove: tagsField.board.requestRemoveTag(tagsField.cardID, tagID)
                onRecolor: hex => tagsField.board.requestRecolorTag(tagID, hex)
            }
        }
    }

    RowLayout {
        spacing: 6
        Layout.fillWidth: true

        TextField {
            id: newTag
            objectName: "newTagField"
            placeholderText: "Add a tag"
            selectByMouse: true
            onAccepted: tagsField.addTag()
            Layout.fillWidth: true
        }
        Button {
            objectName: "addTagButton"
            text: "Add"
            enabled: newTag.text.trim() !== ""
            onClicked: tagsField.addTag()
        }
    }
}
