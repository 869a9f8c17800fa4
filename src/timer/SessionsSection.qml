pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The card's tracked time: the total, the running clock, the start and stop button, and the
// sessions newest first, each of which can be corrected or deleted; "Add" records one by hand.
ColumnLayout {
    id: section

    required property CardDetailModel detail
    required property BoardModel board
    required property TimerModel timer
    required property string cardID

    readonly property bool runsHere: section.timer.hasRunningSession && section.timer.runningCardID === section.cardID
    // The session the editor corrects; empty while it adds one.
    property string editedSessionID

    spacing: 8

    function openEditor(sessionID, startedAt, endedAt) {
        section.editedSessionID = sessionID
        const now = new Date()
        if (sessionID === "")
            editor.openWith("Add Session", new Date(now.getTime() - 3600 * 1000), now)
        else
            editor.openWith("Edit Session", startedAt, isNaN(endedAt.getTime()) ? now : endedAt)
    }

    RowLayout {
        spacing: 8
        Layout.fillWidth: true

        Label {
            text: "Time"
            font.pixelSize: 13
            font.weight: Font.DemiBold
            color: Theme.primaryText
        }
        Label {
            objectName: "trackedTotal"
            text: SessionTimeText.duration(section.detail.totalTrackedSeconds)
            font.pixelSize: 12
            color: Theme.secondaryText
        }
        Label {
            objectName: "runningClock"
            visible: section.runsHere
            text: SessionTimeText.clock(section.timer.elapsed)
            font.pixelSize: 12
            color: Theme.secondaryText
        }
        Item {
            Layout.fillWidth: true
        }
        TimerButton {
            board: section.board
            timer: section.timer
            cardID: section.cardID
        }
        Button {
            id: addButton
            objectName: "addSessionButton"
            text: "Add"
            icon.source: "qrc:/qt/qml/Velto/app/symbols/plus.svg"
            icon.width: 12
            icon.height: 12
            hoverEnabled: true
            ToolTip.text: "Record a session by hand"
            ToolTip.visible: addButton.hovered
            ToolTip.delay: 600
            onClicked: section.openEditor("", new Date(), new Date())
        }
    }

    Label {
        objectName: "noSessionsNote"
        visible: sessionRows.count === 0
        text: "No time tracked on this card yet."
        font.pixelSize: 12
        color: Theme.tertiaryText
    }

    Repeater {
        id: sessionRows
        model: section.detail.sessions
        SessionRow {
            id: sessionRow
            Layout.fillWidth: true
            onEditRequested: section.openEditor(sessionRow.sessionID, sessionRow.startedAt, sessionRow.endedAt)
            onDeleteRequested: section.detail.requestDeleteSession(sessionRow.sessionID)
        }
    }

    SessionEditor {
        id: editor
        objectName: "sessionEditor"
        onSave: (start, end) => {
            if (section.editedSessionID === "")
                section.detail.requestAddSession(start, end)
            else
                section.detail.requestUpdateSession(section.editedSessionID, start, end)
        }
    }
}
