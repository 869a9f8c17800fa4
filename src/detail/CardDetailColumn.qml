pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The side column of the main window: open exactly while the board has a selected card, showing
// that card's pane. Each card gets a pane of its own, so a new selection starts from a fresh load;
// closing the column clears the selection.
Rectangle {
    id: column

    required property AppModel app

    readonly property string cardID: column.app.board ? column.app.board.selectedCardID : ""

    objectName: "cardDetailColumn"
    visible: column.cardID !== ""
    color: Theme.windowBackground

    // Escape from anywhere in the pane closes it, and the keyboard goes back to the card.
    Keys.onEscapePressed: {
        const cardID = column.cardID
        column.app.board.selectedCardID = ""
        column.app.board.requestCardFocus(cardID)
    }

    Rectangle {
        width: 1
        height: parent.height
        color: Theme.separator
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: 1
        spacing: 0

        ToolButton {
            objectName: "closeDetailButton"
            Accessible.name: "Close"
            icon.source: "qrc:/qt/qml/Velto/app/symbols/xmark.svg"
            icon.width: 12
            icon.height: 12
            icon.color: Theme.secondaryText
            onClicked: column.app.board.selectedCardID = ""
            Layout.alignment: Qt.AlignRight
            Layout.rightMargin: 6
            Layout.topMargin: 4
        }

        Repeater {
            // A list of the one id, so that another card replaces the pane instead of reusing it.
            model: column.cardID !== "" ? [column.cardID] : []
            CardDetailView {
                required property string modelData
                app: column.app
                cardID: modelData
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }
    }
}
