pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The card's deadline: the date with a picker and "Clear", or a link that sets one a week ahead.
Item {
    id: deadlineField

    required property BoardModel board
    required property var card

    readonly property string cardID: deadlineField.card.cardID ?? ""
    readonly property date deadline: deadlineField.card.deadline ?? new Date(NaN)
    readonly property bool hasDeadline: !isNaN(deadlineField.deadline.getTime())

    implicitHeight: deadlineField.hasDeadline ? dated.implicitHeight : addLink.implicitHeight
    implicitWidth: deadlineField.hasDeadline ? dated.implicitWidth : addLink.implicitWidth

    RowLayout {
        id: dated
        visible: deadlineField.hasDeadline
        width: parent.width
        spacing: 8

        Label {
            text: "Deadline"
            font.pixelSize: 12
            color: Theme.secondaryText
        }
        DatePickerField {
            objectName: "deadlinePicker"
            date: deadlineField.hasDeadline ? deadlineField.deadline : new Date()
            onPicked: chosen => deadlineField.board.requestSetDeadline(deadlineField.cardID, chosen)
        }
        LinkButton {
            objectName: "clearDeadlineLink"
            text: "Clear"
            onClicked: deadlineField.board.requestSetDeadline(deadlineField.cardID, new Date(NaN))
        }
        Item {
            Layout.fillWidth: true
        }
    }

    LinkButton {
        id: addLink
        objectName: "addDeadlineLink"
        visible: !deadlineField.hasDeadline
        text: "Add a deadline"
        pixelSize: 12
        onClicked: {
            // Seven calendar days on, at this time of day, whatever the clock changes between.
            const due = new Date()
            due.setDate(due.getDate() + 7)
            deadlineField.board.requestSetDeadline(deadlineField.cardID, due)
        }
    }
}
