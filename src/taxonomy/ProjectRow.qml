import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// One project in the sheet: its colour, its name (a double click renames it), how many cards it
// has, and a way to delete it. The row only reports what the user asked; the sheet acts on it.
RowLayout {
    id: row

    // {id, name, color}
    required property var project
    required property int cardCount
    property string draftName: ""
    property bool isEditing: false

    signal rename(string name)
    signal recolor(string color)
    signal deleteRequested()

    function beginEditing() {
        row.draftName = row.project.name
        row.isEditing = true
    }

    // A name of nothing but blanks cancels the edit rather than clearing the name.
    function submitName() {
        const trimmed = row.draftName.trim()
        if (trimmed !== "")
            row.rename(trimmed)
        row.isEditing = false
    }

    objectName: "projectRow"
    spacing: 8

    ColorChoice {
        objectName: "projectColor"
        selection: row.project.color
        onPicked: color => row.recolor(color)
    }

    Label {
        objectName: "projectName"
        visible: !row.isEditing
        text: row.project.name
        elide: Text.ElideRight
        color: Theme.primaryText
        font.pixelSize: Theme.bodySize
        activeFocusOnTab: true
        Layout.fillWidth: true

        Accessible.role: Accessible.StaticText
        Accessible.description: "Double-click to rename"
        Keys.onReturnPressed: row.beginEditing()
        Keys.onEnterPressed: row.beginEditing()

        MouseArea {
            anchors.fill: parent
            onDoubleClicked: row.beginEditing()
        }
    }

    TextField {
        objectName: "projectNameField"
        visible: row.isEditing
        placeholderText: "Name"
        text: row.draftName
        onTextChanged: row.draftName = text
        onVisibleChanged: {
            if (visible) {
                forceActiveFocus()
                selectAll()
            }
        }
        // Handled here rather than in `accepted`, so that the key does not go on to press the
        // sheet's default button.
        Keys.onReturnPressed: row.submitName()
        Keys.onEnterPressed: row.submitName()
        Keys.onEscapePressed: row.isEditing = false
        Layout.fillWidth: true
    }

    Label {
        objectName: "projectCardCount"
        text: row.cardCount
        color: Theme.secondaryText
        font.pixelSize: 11 // small text
        // Qt 6.4 cannot ask a font for tabular figures; the desktop's interface fonts draw digits
        // of one width already.
        ToolTip.text: row.cardCount + " card(s)"
        ToolTip.visible: countHover.hovered
        ToolTip.delay: 600

        HoverHandler {
            id: countHover
        }
    }

    ToolButton {
        objectName: "deleteProjectButton"
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
