pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The cards that have waited on others for more than a week, longest first.
ColumnLayout {
    id: section
    required property AnalyticsModel model

    spacing: 10

    SectionHeading {
        title: "Waiting on Others for more than a week"
    }
    Label {
        objectName: "nothingStuckText"
        visible: section.model.stuckInWaiting.length === 0
        text: "Nothing has been waiting more than seven days."
        color: Theme.secondaryText
        font.pixelSize: Theme.bodySize
        topPadding: 6
        bottomPadding: 6
    }
    ColumnLayout {
        spacing: 0
        Layout.fillWidth: true
        Repeater {
            model: section.model.stuckInWaiting
            delegate: ColumnLayout {
                id: stuckRow
                required property var modelData
                objectName: "stuckRow"
                spacing: 0
                Layout.fillWidth: true

                RowLayout {
                    spacing: 10
                    Layout.fillWidth: true
                    Layout.topMargin: 5
                    Layout.bottomMargin: 5
                    Label {
                        text: stuckRow.modelData.displayName
                        elide: Text.ElideMiddle
                        maximumLineCount: 1
                        color: Theme.primaryText
                        font.pixelSize: Theme.bodySize
                        // Its own width, up to most of the row; a longer name is cut in the middle.
                        Layout.maximumWidth: section.width * 0.6
                        Layout.alignment: Qt.AlignBaseline
                    }
                    Label {
                        visible: stuckRow.modelData.projectName !== ""
                        text: stuckRow.modelData.projectName
                        color: Theme.secondaryText
                        font.pixelSize: Theme.captionSize
                        Layout.alignment: Qt.AlignBaseline
                    }
                    Item {
                        Layout.fillWidth: true
                    }
                    Label {
                        objectName: "stuckDays"
                        text: stuckRow.modelData.days + " days"
                        // A month and more stands out; a card of 8 days and one of 100 read alike.
                        color: stuckRow.modelData.days >= 30 ? Theme.orange : Theme.secondaryText
                        font.pixelSize: Theme.bodySize
                        Layout.alignment: Qt.AlignBaseline
                    }
                }
                AnalyticsSeparator {}
            }
        }
    }
}
