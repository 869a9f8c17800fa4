import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// One tag in the sheet: its colour, its name, whether any card carries it and how many do, and a
// way to delete it. The row only reports what the user asked; the sheet acts on it.
RowLayout {
    id: row

    // {id, name, color}
    required property var tag
    required property int cardCount

    signal recolor(string color)
    signal deleteRequested()

    objectName: "tagRow"
    spacing: 8

    ColorChoice {
        objectName: "tagColor"
        selection: row.tag.color
        onPicked: color => row.recolor(color)
    }

    Label {
        objectName: "tagName"
        text: row.tag.name
        elide: Text.ElideRight
        color: Theme.primaryText
        font.pixelSize: Theme.bodySize
        Layout.fillWidth: row.cardCount > 0
    }

    Label {
        objectName: "tagUnused"
        visible: row.cardCount === 0
        text: "unused"
        // The tertiary label colour: fainter than secondary text.
        color: Theme.pick("#40FFFFFF", "#42000000")
        font.pixelSize: 11 // the caption font
        Layout.fillWidth: true
    }

    Label {
        objectName: "tagCardCount"
        text: row.cardCount
        color: Theme.secondaryText
        font.pixelSize: 11 // the caption font
    }

    ToolButton {
        objectName: "deleteTagButton"
        flat: true
        Accessible.name: "Delete"
        onClicked: row.deleteRequested()
        contentItem: Symbol {
            name: "trash"
            size: 13
            color: Theme.secondaryText
        }
    }
}
