pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The projects of the sheet: a line to make a new one, then a row for each project by name.
ColumnLayout {
    id: section

    required property BoardModel model
    required property TaxonomyUsage usage
    property string newProjectName: ""
    property string newProjectColor: PaletteColors.paletteSlots[0].light

    signal deletionRequested(var project)

    // Each new project takes the next palette colour, so projects made in a row come out apart.
    function addProject() {
        const name = section.newProjectName.trim()
        if (name === "")
            return
        const color = section.newProjectColor
        section.newProjectName = ""
        section.newProjectColor = PaletteColors.dealtAfter(color)
        section.model.requestCreateProject(name, color)
    }

    spacing: 8

    Label {
        text: "Projects"
        color: Theme.primaryText
        font.pixelSize: 13 // the headline font
        font.bold: true
    }

    RowLayout {
        spacing: 8
        Layout.fillWidth: true

        TextField {
            objectName: "newProjectNameField"
            placeholderText: "New project name"
            text: section.newProjectName
            onTextChanged: section.newProjectName = text
            // Handled here rather than in `accepted`, so that the key does not go on to press the
            // sheet's "Done" as well.
            Keys.onReturnPressed: section.addProject()
            Keys.onEnterPressed: section.addProject()
            Layout.fillWidth: true
        }
        ColorChoice {
            objectName: "newProjectColor"
            selection: section.newProjectColor
            onPicked: color => section.newProjectColor = color
        }
        Button {
            objectName: "addProjectButton"
            text: "Add"
            enabled: section.newProjectName.trim() !== ""
            onClicked: section.addProject()
        }
    }

    Repeater {
        model: section.model.projectList

        ProjectRow {
            id: projectRow
            required property var modelData
            project: projectRow.modelData
            cardCount: section.usage.projectCardCounts[projectRow.modelData.id] ?? 0
            Layout.fillWidth: true
            // Each change keeps the other field as it is.
            onRename: name => section.model.requestUpdateProject(projectRow.modelData.id, name,
                                                                 projectRow.modelData.color)
            onRecolor: color => section.model.requestUpdateProject(projectRow.modelData.id,
                                                                   projectRow.modelData.name, color)
            onDeleteRequested: section.deletionRequested(projectRow.modelData)
        }
    }

    Label {
        objectName: "noProjectsNote"
        visible: section.model.projectList.length === 0
        text: "No projects yet. A card can belong to one project, which is what groups the swimlanes and the analytics chart."
        color: Theme.secondaryText
        font.pixelSize: 11 // small text
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
