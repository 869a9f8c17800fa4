import QtQuick
import QtQuick.Controls
import Velto

// The search over the cards' titles, folder names and paths. It edits the board's search text as
// the user types; Escape or the clear button empty it.
Rectangle {
    id: field

    required property BoardModel model
    // The width of the text itself; the bar narrows it when the window is narrow.
    property real textWidth: 190

    implicitWidth: content.implicitWidth + 20
    implicitHeight: content.implicitHeight + 10
    radius: 7
    color: Theme.pick("#26241F", "#FFFFFF")
    border.width: 1
    border.color: input.activeFocus ? Theme.accent : Theme.pick("#383530", "#E3E0DA")

    // Ctrl+F: the search takes the keyboard with its text selected, ready to be typed over.
    function takeKeyboard() {
        input.forceActiveFocus()
        input.selectAll()
    }

    Row {
        id: content
        anchors.centerIn: parent
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "magnifyingglass"
            size: 11
            color: Theme.secondaryText
        }

        TextField {
            id: input
            objectName: "searchField"
            anchors.verticalCenter: parent.verticalCenter
            width: field.textWidth
            padding: 0
            background: null
            placeholderText: "Search folders"
            placeholderTextColor: Theme.secondaryText
            color: Theme.primaryText
            selectByMouse: true
            font.pointSize: 12.5 * 0.75
            // Typing does not break this binding; only the model's text shows.
            text: field.model.searchText
            onTextEdited: field.model.searchText = input.text
            // With nothing to clear, Escape is left to whatever else listens for it.
            Keys.onEscapePressed: event => {
                event.accepted = field.model.searchText !== ""
                field.model.searchText = ""
            }
        }

        AbstractButton {
            id: clearButton
            objectName: "clearSearchButton"
            anchors.verticalCenter: parent.verticalCenter
            visible: field.model.searchText !== ""
            // Escape does the same from the keyboard.
            focusPolicy: Qt.NoFocus
            onClicked: field.model.searchText = ""

            contentItem: Symbol {
                name: "xmark.circle.fill"
                size: 12
                color: clearButton.down ? Theme.primaryText : Theme.secondaryText
            }
        }
    }
}
