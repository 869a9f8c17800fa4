import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The main window's content: a waiting screen, the failure screen, or the board, by where
// start-up stands. Appearing starts start-up; a second run after success does nothing.
Item {
    id: root
    required property AppModel app
    signal analyticsRequested()
    signal diagnosticsRequested()

    Component.onCompleted: root.app.requestStart()

    Loader {
        anchors.fill: parent
        sourceComponent: {
            // Start-up still goes on behind the gate, so the other windows work as usual.
            if (root.app.installLocation !== InstallLocation.Ok)
                return gate
            switch (root.app.startupKind) {
            case AppModel.Ready: return boardPlace
            case AppModel.Failed: return failure
            default: return starting
            }
        }
    }

    Component {
        id: starting
        Item {
            objectName: "startingView"
            ColumnLayout {
                anchors.centerIn: parent
                spacing: Theme.spacing
                BusyIndicator {
                    running: true
                    Layout.alignment: Qt.AlignHCenter
                }
                Label {
                    text: "Opening the shared database…"
                    color: Theme.secondaryText
                    font.pixelSize: Theme.bodySize
                    Layout.alignment: Qt.AlignHCenter
                }
            }
        }
    }

    Component {
        id: gate
        InstallLocationGate {
            objectName: "installLocationGate"
            verdict: root.app.installLocation
            dataFolder: root.app.dataFolder
            onRevealRequested: root.app.revealDataFolder()
        }
    }

    Component {
        id: failure
        StartupFailureView {
            objectName: "startupFailureView"
            message: root.app.failureMessage
            onRetry: root.app.requestRetry()
        }
    }

    Component {
        id: boardPlace
        SplitView {
            id: split
            BoardView {
                objectName: "boardPlace"
                board: root.app.board
                timer: root.app.timer
                SplitView.fillWidth: true
                onAnalyticsRequested: root.analyticsRequested()
                onDiagnosticsRequested: root.diagnosticsRequested()
                // The bar above the board needs this much to show all of its controls.
                SplitView.minimumWidth: 620
            }
            CardDetailColumn {
                app: root.app
                SplitView.minimumWidth: 280
                // Narrower, down to its minimum, where the window leaves the board no more.
                SplitView.preferredWidth: Math.max(280, Math.min(340, split.width - 620))
            }
        }
    }
}
