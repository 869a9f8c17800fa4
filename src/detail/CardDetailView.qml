pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The pane of one card. Its place on the board (status, priority, project, title, goal, tags,
// deadline) goes to the board; its folder, checklist and sessions go to a detail model made for
// this card alone, which the pane drops with the card.
ScrollView {
    id: root

    required property AppModel app
    required property string cardID

    readonly property BoardModel board: root.app.board
    readonly property TimerModel timer: root.app.timer
    // The card as the board holds it now: read again after each change of the board, since a
    // method's answer is no binding.
    property var card: root.board.cardDetail(root.cardID)
    readonly property CardDetailModel detail: CardDetailModel {
        app: root.app
    }
    // Set while the first load runs, so that its outcome is checked once against the board.
    property bool isFirstLoad: true

    objectName: "cardDetailView"
    implicitWidth: 320
    padding: 14
    contentWidth: availableWidth
    clip: true

    Component.onCompleted: {
        root.timerRanHere = root.timer.runningCardID === root.cardID
        root.detail.requestLoad(root.cardID)
    }

    Connections {
        target: root.board
        function onPresentationChanged() {
            root.card = root.board.cardDetail(root.cardID)
        }
    }

    // The detail has just found the folder unreadable while the board still has a place for it:
    // the board reloads so that the card's face catches up.
    Connections {
        target: root.detail
        function onIsLoadingChanged() {
            if (root.detail.isLoading || !root.isFirstLoad)
                return
            root.isFirstLoad = false
            if (root.detail.didFindFolderUnreadable && root.board.cardDetail(root.cardID).hasFolderURL)
                root.board.requestReload()
        }
    }

    // A session started or stopped on this card shows in its list at once.
    // Whether the timer ran on this card when last looked at; set once, then by the handler, as a
    // binding would already hold the new state when the handler runs.
    property bool timerRanHere
    Connections {
        target: root.timer
        function onRunningChanged() {
            const runsHere = root.timer.runningCardID === root.cardID
            if (runsHere !== root.timerRanHere)
                root.detail.requestLoad(root.cardID)
            root.timerRanHere = runsHere
        }
    }

    ColumnLayout {
        width: root.availableWidth
        spacing: 16

        CardDetailHeader {
            board: root.board
            detail: root.detail
            card: root.card
            Layout.fillWidth: true
        }
        DetailDivider {}
        CardDetailFields {
            board: root.board
            card: root.card
            Layout.fillWidth: true
        }
        DetailDivider {}
        ChecklistSection {
            detail: root.detail
            Layout.fillWidth: true
        }
        DetailDivider {}
        WorkingFileSection {
            workingFile: root.card.workingFile
            Layout.fillWidth: true
        }
        DetailDivider {}
        FolderBrowserSection {
            detail: root.detail
            Layout.fillWidth: true
        }
        DetailDivider {}
        SessionsSection {
            detail: root.detail
            board: root.board
            timer: root.timer
            cardID: root.cardID
            Layout.fillWidth: true
        }

        QuickLookSheet {
            objectName: "quickLookSheet"
            url: root.detail.previewURL
            onClosed: root.detail.previewURL = ""
        }
    }
}
