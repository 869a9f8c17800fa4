pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The card's fields that belong to its place on the board: status, priority, project, goal, tags
// and deadline. Every change goes to the board, which writes it and reloads.
ColumnLayout {
    id: fields

    required property BoardModel board
    required property var card

    readonly property string cardID: fields.card.cardID ?? ""

    spacing: 10

    component FieldLabel: Label {
        font.pixelSize: 12
        color: Theme.secondaryText
    }

    GridLayout {
        columns: 2
        columnSpacing: 10
        rowSpacing: 6
        Layout.fillWidth: true

        FieldLabel { text: "Status" }
        ComboBox {
            objectName: "statusPicker"
            model: Array.from({ length: BoardVocabulary.statusCount }, (_, index) => BoardVocabulary.statusLabel(index))
            currentIndex: fields.card.status ?? 0
            onActivated: index => fields.board.requestSetStatus(fields.cardID, index)
            Layout.fillWidth: true
        }

        FieldLabel { text: "Priority" }
        ComboBox {
            objectName: "priorityPicker"
            model: Array.from({ length: BoardVocabulary.priorityCount }, (_, index) => BoardVocabulary.priorityLabel(index))
            currentIndex: fields.card.priority ?? 0
            onActivated: index => fields.board.requestSetPriority(fields.cardID, index)
            Layout.fillWidth: true
        }

        FieldLabel { text: "Project" }
        AbstractButton {
            id: projectButton
            objectName: "projectButton"
            hoverEnabled: true
            padding: 4
            Layout.fillWidth: true
            onClicked: projectMenu.popup(projectButton, 0, projectButton.height)

            contentItem: Row {
                spacing: 6
                Swatch {
                    visible: (fields.card.projectID ?? "") !== ""
                    hex: fields.card.projectColor ?? ""
                    size: 8
                    anchors.verticalCenter: parent.verticalCenter
                }
                Label {
                    text: (fields.card.projectID ?? "") !== "" ? fields.card.projectName : "None"
                    font.pixelSize: 13
                    color: Theme.primaryText
                    anchors.verticalCenter: parent.verticalCenter
                }
                Symbol {
                    name: "chevron.down"
                    size: 8
                    color: Theme.secondaryText
                    anchors.verticalCenter: parent.verticalCenter
                }
            }
            background: Rectangle {
                radius: 5
                color: projectButton.hovered ? Theme.quaternaryFill : "transparent"
            }

            Menu {
                id: projectMenu
                objectName: "projectMenu"
                MenuItem {
                    text: "None"
                    checkable: true
                    checked: (fields.card.projectID ?? "") === ""
                    onTriggered: fields.board.requestSetProject(fields.cardID, "")
                }
                Instantiator {
                    model: fields.board.projectList
                    delegate: MenuItem {
                        required property var modelData
                        objectName: "projectEntry"
                        text: modelData.name
                        checkable: true
                        checked: modelData.id === (fields.card.projectID ?? "")
                        onTriggered: fields.board.requestSetProject(fields.cardID, modelData.id)
                    }
                    onObjectAdded: (index, object) => projectMenu.insertItem(index + 1, object)
                    onObjectRemoved: (index, object) => projectMenu.removeItem(object)
                }
                MenuSeparator {}
                MenuItem {
                    text: "New Project…"
                    onTriggered: fields.board.isManagingTaxonomy = true
                }
            }
        }
    }

    // The goal: its heading with "Edit…", then the text itself, which opens the editor too.
    RowLayout {
        spacing: 8
        Layout.fillWidth: true
        Layout.topMargin: 4
        FieldLabel { text: "Goal" }
        LinkButton {
            objectName: "editGoalLink"
            text: "Edit…"
            onClicked: goalSheet.open()
        }
    }
    AbstractButton {
        id: goalBlock
        objectName: "goalBlock"
        readonly property bool hasGoal: (fields.card.goal ?? "") !== ""
        padding: 8
        hoverEnabled: true
        Layout.fillWidth: true
        onClicked: goalSheet.open()
        contentItem: Label {
            objectName: "goalText"
            text: goalBlock.hasGoal ? fields.card.goal : "What would finishing this mean?"
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            font.pixelSize: 12
            color: goalBlock.hasGoal ? Theme.primaryText : Theme.tertiaryText
        }
        background: Rectangle {
            radius: 6
            color: Theme.quaternaryFill
        }
    }

    CardTagsField {
        board: fields.board
        card: fields.card
        Layout.fillWidth: true
        Layout.topMargin: 4
    }

    CardDeadlineField {
        board: fields.board
        card: fields.card
        Layout.fillWidth: true
        Layout.topMargin: 4
    }

    MarkdownEditorSheet {
        id: goalSheet
        objectName: "goalSheet"
        title: "Goal — " + (fields.card.title ?? "")
        subtitle: "What finishing this would mean. Copied verbatim into the briefing, so markdown here reaches the agent as markdown."
        placeholder: "What would finishing this mean?\n\nConstraints, decisions already made, what to avoid."
        storedText: fields.card.goal ?? ""
        onSave: text => fields.board.requestSetGoal(fields.cardID, text)
    }
}
