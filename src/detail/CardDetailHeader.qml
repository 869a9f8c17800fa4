pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The top of the detail pane: the title field, the folder's path, the actions on the folder, the
// count of new files, and the detail's failure.
ColumnLayout {
    id: header

    required property BoardModel board
    required property CardDetailModel detail
    required property var card

    readonly property string cardID: header.card.cardID ?? ""
    // The last title handed to the board, so that Return followed by leaving the field writes once.
    property string committedTitle: (header.card.storedTitle ?? "").trim()
    // How long "Copied" stays after a briefing was copied.
    readonly property int copiedLabelMilliseconds: 2500

    spacing: 0

    function commitTitle() {
        const trimmed = titleField.text.trim()
        if (trimmed === header.committedTitle)
            return
        header.committedTitle = trimmed
        header.board.requestSetTitle(header.cardID, trimmed)
    }

    TextField {
        id: titleField
        objectName: "titleField"
        placeholderText: header.card.displayName ?? ""
        font.pixelSize: 15
        font.weight: Font.DemiBold
        leftPadding: 0
        rightPadding: 0
        background: Item {}
        selectByMouse: true
        onEditingFinished: header.commitTitle()
        // Taken once, when the pane loads the card: a later change of the card does not overwrite
        // what is being typed.
        Component.onCompleted: text = header.card.storedTitle ?? ""
        Layout.fillWidth: true
    }

    TextEdit {
        objectName: "pathText"
        text: header.card.displayPath ?? ""
        readOnly: true
        selectByMouse: true
        wrapMode: TextEdit.WrapAnywhere
        font.pixelSize: 11
        color: Theme.secondaryText
        selectedTextColor: "#FFFFFF" // white on the accent in both appearances
        selectionColor: Theme.accent
        Layout.fillWidth: true
    }

    Flow {
        spacing: 8
        Layout.topMargin: 2 + 4
        Layout.fillWidth: true

        Button {
            objectName: "openFolderButton"
            text: PlatformWords.openInFileManager
            icon.source: "qrc:/qt/qml/Velto/app/symbols/folder.svg"
            icon.width: 14
            icon.height: 14
            onClicked: header.board.requestOpenInFinder(header.cardID)
        }
        Button {
            objectName: "locateButton"
            visible: header.card.needsLocate ?? false
            text: "Locate…"
            onClicked: header.board.requestLocate(header.cardID)
        }
        // Shown once the board can write a briefing.
        Button {
            id: briefing
            objectName: "briefingButton"
            readonly property bool isCopied: copiedLabel.running
            visible: typeof header.board["requestCopyBriefing"] === "function"
            text: briefing.isCopied ? "Copied" : "Copy Briefing"
            icon.source: "qrc:/qt/qml/Velto/app/symbols/" + (briefing.isCopied ? "checkmark" : "doc.on.doc") + ".svg"
            icon.width: 14
            icon.height: 14
            hoverEnabled: true
            ToolTip.text: "Copy this card's goal, key files and folder contents as markdown, ready to paste to an agent"
            ToolTip.visible: briefing.hovered
            ToolTip.delay: 600
            onClicked: {
                header.board["requestCopyBriefing"](header.cardID)
                copiedLabel.restart()
            }
            Timer {
                id: copiedLabel
                interval: header.copiedLabelMilliseconds
            }
        }
    }

    RowLayout {
        objectName: "newFilesLine"
        visible: header.detail.newFileCount > 0
        spacing: 4
        Layout.topMargin: 8
        Layout.fillWidth: true

        Symbol {
            name: "sparkles"
            size: 11
            color: Theme.secondaryText
        }
        Label {
            objectName: "newFilesText"
            text: header.detail.newFileCount === 1 ? "1 new file since you last opened this"
                                                   : header.detail.newFileCount + " new files since you last opened this"
            font.pixelSize: 11
            color: Theme.secondaryText
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }

    ErrorBanner {
        objectName: "detailErrorBanner"
        message: header.detail.errorMessage
        visible: message !== ""
        radius: 6
        onDismiss: header.detail.clearError()
        Layout.topMargin: 8
        Layout.fillWidth: true
    }
}
