pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// One key file of the checklist: its tick, its name (struck through when done, greyed when the
// file is gone) and a mark for a missing file. A click selects it, a double click opens it.
Control {
    id: row

    required property CardDetailModel detail
    required property string itemID
    required property string displayName
    required property bool isDone
    required property bool isMissing
    required property bool isSelected

    signal takeFocus()

    objectName: "checklistRow"
    leftPadding: 6
    rightPadding: 6
    topPadding: 3
    bottomPadding: 3

    background: Rectangle {
        radius: 4
        color: row.isSelected ? Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b, 0.18) : "transparent"
    }

    contentItem: RowLayout {
        spacing: 7

        AbstractButton {
            objectName: "tickButton"
            Accessible.name: row.isDone ? "Mark as not done" : "Mark as done"
            padding: 0
            onClicked: row.detail.requestToggleItem(row.itemID)
            contentItem: Symbol {
                name: row.isDone ? "checkmark.circle.fill" : "circle"
                size: 14
                color: row.isDone ? Theme.accent : Theme.secondaryText
            }
        }
        Label {
            objectName: "itemName"
            text: row.displayName
            font.pixelSize: 13
            font.strikeout: row.isDone
            color: row.isDone || row.isMissing ? Theme.secondaryText : Theme.primaryText
            elide: Text.ElideMiddle
            Layout.fillWidth: true
        }
        Symbol {
            id: missingMark
            objectName: "missingMark"
            visible: row.isMissing
            name: "questionmark.circle"
            size: 11
            color: Theme.orange

            HoverHandler {
                id: missingHover
            }
            ToolTip.text: "This file is no longer in the folder. Velto has not moved or deleted anything."
            ToolTip.visible: missingHover.hovered
            ToolTip.delay: 500
        }
    }

    TapHandler {
        acceptedButtons: Qt.LeftButton
        onTapped: {
            row.detail.selectedItemID = row.itemID
            row.takeFocus()
        }
        onDoubleTapped: row.detail.requestOpenItem(row.itemID)
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: rowMenu.popup()
    }

    Menu {
        id: rowMenu
        objectName: "checklistRowMenu"
        MenuItem {
            text: "Open"
            onTriggered: row.detail.requestOpenItem(row.itemID)
        }
        MenuItem {
            text: "Quick Look"
            onTriggered: row.detail.requestPreviewItem(row.itemID)
        }
        MenuItem {
            text: PlatformWords.revealInFileManager
            onTriggered: row.detail.requestRevealItem(row.itemID)
        }
        MenuSeparator {}
        MenuItem {
            objectName: "removeItemEntry"
            text: "Remove from Checklist"
            palette.windowText: Theme.red
            palette.buttonText: Theme.red
            onTriggered: row.detail.requestRemoveItem(row.itemID)
        }
    }
}
