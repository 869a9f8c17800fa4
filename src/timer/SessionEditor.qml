pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The sheet that records a session by hand or corrects one: two instants, the length between them
// as they change, and "Save" only while the end comes after the start.
Popup {
    id: editor

    property string title
    property date start
    property date end

    readonly property bool isValid: editor.end.getTime() > editor.start.getTime()

    signal save(date start, date end)

    parent: Overlay.overlay
    anchors.centerIn: parent
    modal: true
    padding: 18
    closePolicy: Popup.CloseOnEscape

    // Opens on the given instants; what the user changes stays in the sheet until saved.
    function openWith(title, start, end) {
        editor.title = title
        editor.start = start
        editor.end = end
        editor.open()
    }

    function saveAndClose() {
        if (!editor.isValid)
            return
        editor.close()
        editor.save(editor.start, editor.end)
    }

    background: Rectangle {
        radius: 10
        color: Theme.windowBackground
        border.width: 1
        border.color: Theme.separator
    }

    contentItem: ColumnLayout {
        spacing: 12

        Label {
            objectName: "sessionEditorTitle"
            text: editor.title
            font.pixelSize: 13
            font.weight: Font.DemiBold
            color: Theme.primaryText
        }
        GridLayout {
            columns: 2
            columnSpacing: 10
            rowSpacing: 8
            Label {
                text: "Started"
                color: Theme.primaryText
            }
            DateTimeField {
                objectName: "startedField"
                value: editor.start
                onEdited: changed => editor.start = changed
            }
            Label {
                text: "Ended"
                color: Theme.primaryText
            }
            DateTimeField {
                objectName: "endedField"
                value: editor.end
                onEdited: changed => editor.end = changed
            }
        }
        RowLayout {
            spacing: 4
            Symbol {
                visible: !editor.isValid
                name: "exclamationmark.triangle"
                size: 12
                color: Theme.orange
            }
            Label {
                objectName: "sessionEditorLength"
                text: editor.isValid ? SessionTimeText.between(editor.start, editor.end)
                                     : "A session has to end after it starts."
                font.pixelSize: 12
                color: editor.isValid ? Theme.secondaryText : Theme.orange
            }
        }
        RowLayout {
            spacing: 8
            Layout.alignment: Qt.AlignRight
            Button {
                objectName: "sessionCancelButton"
                text: "Cancel"
                onClicked: editor.close()
            }
            Button {
                objectName: "sessionSaveButton"
                text: "Save"
                highlighted: true
                enabled: editor.isValid
                onClicked: editor.saveAndClose()
            }
        }
    }

    Shortcut {
        enabled: editor.opened
        sequences: ["Return", "Enter"]
        onActivated: editor.saveAndClose()
    }
}
