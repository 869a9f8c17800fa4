import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// Where the user manages projects and tags: projects are made, renamed, recoloured and deleted
// here; tags, made on a card, are recoloured, counted and deleted. The sheet keeps nothing but its
// drafts: every change goes to the board, which writes it and reloads, and the rows follow.
// It is the modal dialog itself, open while the board is managing its taxonomy; closing it in any
// way ends that.
Dialog {
    id: sheet

    required property BoardModel model

    property alias newProjectName: projects.newProjectName
    property alias newProjectColor: projects.newProjectColor
    // The {id, name, color} record a confirmation is open for, or null.
    property var projectPendingDeletion: null
    property var tagPendingDeletion: null

    function dismiss() {
        sheet.close()
    }

    objectName: "projectsAndTagsSheet"
    modal: true
    focus: true
    visible: sheet.model.isManagingTaxonomy
    anchors.centerIn: Overlay.overlay
    width: 460
    // A window at its smallest is shorter than the sheet; the rows then scroll inside it.
    height: Math.min(520, (Overlay.overlay?.height ?? 520) - 24)
    padding: 0
    closePolicy: Popup.CloseOnEscape

    // The drafts start over with each opening.
    onAboutToShow: {
        sheet.newProjectName = ""
        sheet.newProjectColor = PaletteColors.paletteSlots[0].light
        sheet.projectPendingDeletion = null
        sheet.tagPendingDeletion = null
    }
    onClosed: sheet.model.isManagingTaxonomy = false

    TaxonomyUsage {
        id: taxonomyUsage
        model: sheet.model
    }

    contentItem: ColumnLayout {
        spacing: 0
        focus: true
        // Return anywhere but in a text field presses "Done"; the fields take the key themselves.
        Keys.onReturnPressed: sheet.dismiss()
        Keys.onEnterPressed: sheet.dismiss()

        RowLayout {
            Layout.margins: 14

            Label {
                text: "Projects & Tags"
                color: Theme.primaryText
                font.pixelSize: 13 // the headline font
                font.bold: true
                Layout.fillWidth: true
            }
            Button {
                objectName: "doneButton"
                text: "Done"
                highlighted: true
                onClicked: sheet.dismiss()
            }
        }

        Separator {}

        ScrollView {
            id: scroller
            clip: true
            contentWidth: availableWidth
            Layout.fillWidth: true
            Layout.fillHeight: true

            ColumnLayout {
                width: scroller.availableWidth
                spacing: 0

                ProjectsSection {
                    id: projects
                    model: sheet.model
                    usage: taxonomyUsage
                    Layout.margins: 14
                    Layout.fillWidth: true
                    onDeletionRequested: project => sheet.projectPendingDeletion = project
                }
                Separator {}
                TagsSection {
                    model: sheet.model
                    usage: taxonomyUsage
                    Layout.margins: 14
                    Layout.fillWidth: true
                    onDeletionRequested: tag => sheet.tagPendingDeletion = tag
                }
            }
        }
    }

    DeleteConfirmation {
        objectName: "projectDeletion"
        visible: sheet.projectPendingDeletion !== null
        title: "Delete “" + (sheet.projectPendingDeletion?.name ?? "") + "”?"
        message: "Cards in this project stay on the board and become unassigned. Nothing is removed."
        onConfirmed: sheet.model.requestDeleteProject(sheet.projectPendingDeletion.id)
        onClosed: sheet.projectPendingDeletion = null
    }

    DeleteConfirmation {
        objectName: "tagDeletion"
        visible: sheet.tagPendingDeletion !== null
        title: "Delete the tag “" + (sheet.tagPendingDeletion?.name ?? "") + "”?"
        message: "It is removed from every card that carries it. The cards themselves are untouched."
        onConfirmed: sheet.model.requestDeleteTag(sheet.tagPendingDeletion.id)
        onClosed: sheet.tagPendingDeletion = null
    }

    component Separator: Rectangle {
        implicitHeight: 1
        color: Theme.separator
        Layout.fillWidth: true
    }
}
