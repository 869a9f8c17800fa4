import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The whole board: the filter bar, the failure banner, then the columns, the lanes or the list of
// what is due soon.
Rectangle {
    id: root
    required property BoardModel board
    required property TimerModel timer
    signal analyticsRequested()
    signal diagnosticsRequested()

    color: Theme.pick("#171613", "#F4F3F0")
    implicitWidth: 940
    implicitHeight: 500

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        FilterBar {
            id: filterBar
            model: root.board
            onAnalyticsRequested: root.analyticsRequested()
            onDiagnosticsRequested: root.diagnosticsRequested()
            Layout.fillWidth: true
        }
        Rectangle {
            color: Theme.separator
            Layout.fillWidth: true
            Layout.preferredHeight: 1
        }
        ErrorBanner {
            objectName: "errorBanner"
            // The board's own failure first; the timer's shows when the board has none.
            message: root.board.errorMessage !== "" ? root.board.errorMessage : root.timer.errorMessage
            visible: message !== ""
            onDismiss: {
                root.board.dismissError()
                root.timer.clearError()
            }
            Layout.fillWidth: true
        }
        Loader {
            Layout.fillWidth: true
            Layout.fillHeight: true
            sourceComponent: root.board.mode === BoardModel.Mode.dueSoon ? dueSoon
                           : root.board.groupByProject ? swimlanes : columns
        }
    }

    Component {
        id: columns
        Item {
            ColumnRow {
                objectName: "columnRow"
                anchors.fill: parent
                anchors.margins: 10
                board: root.board
                timer: root.timer
            }
        }
    }
    Component {
        id: swimlanes
        SwimlaneBoard {
            objectName: "swimlaneBoard"
            board: root.board
            timer: root.timer
        }
    }
    Component {
        id: dueSoon
        DueSoonView {
            objectName: "dueSoonView"
            model: root.board
        }
    }

    Shortcut {
        sequences: [StandardKey.Open]
        onActivated: root.board.requestAddFoldersFromPanel()
    }
    Shortcut {
        sequences: [MenuShortcuts.search]
        onActivated: filterBar.focusSearch()
    }

    // Changes from outside - a folder renamed in the file manager, a write by another process -
    // reach the board when the user comes back to it.
    Connections {
        target: Qt.application
        function onStateChanged() {
            if (Qt.application.state === Qt.ApplicationActive && !root.board.isLoading)
                root.board.requestReload()
        }
    }

    Dialog {
        id: pendingDrops
        objectName: "pendingDropDialog"
        parent: Overlay.overlay
        anchors.centerIn: parent
        modal: true
        visible: root.board.pendingDropTitle !== ""
        title: root.board.pendingDropTitle
        width: Math.min(460, root.width - 40)
        Label {
            width: parent.width
            text: root.board.pendingDropMessage
            wrapMode: Text.Wrap
        }
        footer: DialogButtonBox {
            Button {
                objectName: "chooseFolderButton"
                text: "Choose Folder…"
                DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole
            }
            Button {
                text: "Cancel"
                DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
            }
        }
        onAccepted: root.board.requestResolvePendingFileDrops()
        onRejected: root.board.cancelPendingFileDrops()
    }

    ProjectsAndTagsSheet {
        objectName: "taxonomySheet"
        parent: Overlay.overlay
        model: root.board
    }
}
