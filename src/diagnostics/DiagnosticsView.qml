import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The diagnostics window's content: a snapshot of the shared store taken each time the view is
// made, then the report, or why it could not be taken.
Item {
    id: view
    required property DiagnosticsModel model

    objectName: "diagnosticsView"
    implicitWidth: 640
    implicitHeight: 520

    Component.onCompleted: view.model.requestRefresh()

    Loader {
        anchors.fill: parent
        sourceComponent: view.model.stateKind === DiagnosticsModel.Ready ? report
                       : view.model.stateKind === DiagnosticsModel.Failed ? failure : loading
    }

    Component {
        id: loading
        Item {
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
        id: failure
        Item {
            objectName: "diagnosticsFailure"
            ColumnLayout {
                anchors.centerIn: parent
                width: Math.min(parent.width - 80, 560)
                spacing: Theme.spacing
                Symbol {
                    name: "exclamationmark.triangle"
                    size: 28
                    color: Theme.secondaryText
                    Layout.alignment: Qt.AlignHCenter
                }
                Label {
                    text: "Could not open the shared database"
                    font.pixelSize: Theme.titleSize
                    font.bold: true
                    color: Theme.primaryText
                    Layout.alignment: Qt.AlignHCenter
                }
                TextEdit {
                    text: view.model.failureMessage
                    readOnly: true
                    selectByMouse: true
                    wrapMode: TextEdit.Wrap
                    horizontalAlignment: TextEdit.AlignHCenter
                    color: Theme.secondaryText
                    font.pixelSize: Theme.bodySize
                    Layout.fillWidth: true
                }
                Button {
                    objectName: "diagnosticsTryAgainButton"
                    text: "Try again"
                    Layout.alignment: Qt.AlignHCenter
                    onClicked: view.model.requestRefresh()
                }
            }
        }
    }

    Component {
        id: report
        ScrollView {
            id: scroller
            objectName: "diagnosticsReport"
            contentWidth: availableWidth
            clip: true

            ColumnLayout {
                width: scroller.availableWidth
                spacing: 20

                Item {
                    Layout.preferredHeight: 0
                }
                DiagnosticsSection {
                    title: "App Group"
                    rows: view.model.appGroupRows
                    Layout.fillWidth: true
                    Layout.leftMargin: 18
                    Layout.rightMargin: 18
                }
                DiagnosticsSection {
                    title: "Database"
                    rows: view.model.databaseRows
                    Layout.fillWidth: true
                    Layout.leftMargin: 18
                    Layout.rightMargin: 18
                }
                DiagnosticsSection {
                    title: "Migrations"
                    rows: view.model.migrationRows
                    Layout.fillWidth: true
                    Layout.leftMargin: 18
                    Layout.rightMargin: 18
                }
                DiagnosticsSection {
                    title: "Tables"
                    rows: view.model.missingTableRows
                    Layout.fillWidth: true
                    Layout.leftMargin: 18
                    Layout.rightMargin: 18

                    Repeater {
                        model: view.model.tables
                        delegate: Label {
                            required property string modelData
                            objectName: "tableName"
                            text: modelData
                            color: Theme.secondaryText
                            font.family: "monospace"
                            font.pixelSize: Theme.calloutSize
                        }
                    }
                }
                DiagnosticsSection {
                    objectName: "notificationSection"
                    title: "Cross-process notification"
                    rows: view.model.notificationRows
                    Layout.fillWidth: true
                    Layout.leftMargin: 18
                    Layout.rightMargin: 18

                    RowLayout {
                        spacing: 8
                        Layout.topMargin: 4
                        Button {
                            objectName: "postNotificationButton"
                            text: "Post change notification"
                            onClicked: view.model.postChangeNotification()
                        }
                        Button {
                            objectName: "reloadDiagnosticsButton"
                            text: "Reload"
                            onClicked: view.model.requestRefresh()
                        }
                    }
                    Label {
                        text: PlatformWords.probeInstructions
                        color: Theme.secondaryText
                        font.pixelSize: Theme.calloutSize
                        wrapMode: Text.Wrap
                        Layout.fillWidth: true
                    }
                }
                Item {
                    Layout.preferredHeight: 0
                }
            }
        }
    }
}
