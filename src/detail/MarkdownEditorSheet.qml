pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// A modal editor for a text kept as raw markdown: the text is edited as typed and never rendered,
// since it travels verbatim. "Save" hands over the draft as it stands; trimming is the caller's.
Popup {
    id: sheet

    required property string title
    required property string subtitle
    required property string placeholder
    // The text as stored; each opening starts from it.
    required property string storedText
    property string originalTrimmed

    signal save(string text)

    readonly property bool isChanged: editor.text.trim() !== sheet.originalTrimmed

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(560, parent ? parent.width - 40 : 560)
    modal: true
    padding: 0
    closePolicy: Popup.NoAutoClose

    onAboutToShow: {
        editor.text = sheet.storedText
        sheet.originalTrimmed = sheet.storedText.trim()
    }
    onOpened: editor.forceActiveFocus()

    function saveAndClose() {
        if (!sheet.isChanged)
            return
        sheet.save(editor.text)
        sheet.close()
    }

    background: Rectangle {
        radius: 10
        color: Theme.windowBackground
        border.width: 1
        border.color: Theme.separator
    }

    contentItem: ColumnLayout {
        // The save key works wherever the focus is in the sheet, not only in the editor.
        Keys.onShortcutOverride: event => event.accepted = sheet.isSaveKey(event)
        Keys.onPressed: event => sheet.saveOnKey(event)
        spacing: 0

        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            Layout.topMargin: 16
            Layout.bottomMargin: 10
            Label {
                objectName: "sheetTitle"
                text: sheet.title
                font.pixelSize: 13
                font.weight: Font.DemiBold
                color: Theme.primaryText
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            Label {
                text: sheet.subtitle
                font.pixelSize: 11
                color: Theme.secondaryText
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }
        DetailDivider {}

        ScrollView {
            Layout.fillWidth: true
            Layout.preferredHeight: 320
            Layout.minimumHeight: 320
            TextArea {
                id: editor
                objectName: "markdownEditor"
                leftPadding: 16
                rightPadding: 16
                topPadding: 12
                bottomPadding: 12
                wrapMode: TextEdit.Wrap
                selectByMouse: true
                textFormat: TextEdit.PlainText
                font.pixelSize: 13
                color: Theme.primaryText
                background: null
                Keys.onEscapePressed: sheet.close()
                Keys.onShortcutOverride: event => event.accepted = sheet.isSaveKey(event)
                Keys.onPressed: event => sheet.saveOnKey(event)
            }
            Label {
                visible: editor.text === ""
                x: 20
                y: 16
                width: parent.width - 40
                text: sheet.placeholder
                color: Theme.tertiaryText
                font.pixelSize: 13
                wrapMode: Text.Wrap
            }
        }
        DetailDivider {}

        RowLayout {
            spacing: 10
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            Layout.topMargin: 12
            Layout.bottomMargin: 12

            // A reminder of the syntax, shown as plain characters.
            TextEdit {
                text: "**bold**  _italic_  `code`  - list  ## heading"
                textFormat: TextEdit.PlainText
                readOnly: true
                selectByMouse: true
                font.family: "monospace"
                font.pixelSize: 11
                color: Theme.tertiaryText
                wrapMode: TextEdit.Wrap
                Layout.fillWidth: true
            }
            Button {
                objectName: "cancelButton"
                text: "Cancel"
                onClicked: sheet.close()
            }
            Button {
                objectName: "saveButton"
                text: "Save"
                highlighted: true
                enabled: sheet.isChanged
                onClicked: sheet.saveAndClose()
            }
        }
    }

    // The save key is claimed before any shortcut of the window sees it: the window's own command
    // on the same key must not run, nor leave both undecided.
    function isSaveKey(event) {
        return (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && (event.modifiers & Qt.ControlModifier)
    }
    function saveOnKey(event) {
        if (!isSaveKey(event))
            return
        event.accepted = true
        saveAndClose()
    }
    Shortcut {
        enabled: sheet.opened
        sequences: [StandardKey.Cancel]
        onActivated: sheet.close()
    }
}
