pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The board as one band per project, each with its own row of columns; the whole stack scrolls.
ScrollView {
    id: lanes
    required property BoardModel board
    required property TimerModel timer

    contentWidth: availableWidth

    ColumnLayout {
        width: lanes.availableWidth - 20
        x: 10
        y: 10
        spacing: 14

        Repeater {
            model: lanes.board.swimlaneList
            delegate: ColumnLayout {
                id: lane
                required property var modelData
                objectName: "lane-" + modelData.identity
                spacing: 6
                Layout.fillWidth: true

                RowLayout {
                    spacing: 6
                    Layout.leftMargin: 4
                    Layout.rightMargin: 4
                    Swatch {
                        visible: lane.modelData.laneKind === "project"
                        hex: lane.modelData.color
                        size: 8
                    }
                    Text {
                        text: lane.modelData.name
                        font.pixelSize: 13
                        font.weight: Font.DemiBold
                        color: Theme.pick("#EFECE6", "#1A1917")
                    }
                }
                ColumnRow {
                    board: lanes.board
                    timer: lanes.timer
                    laneKind: lane.modelData.laneKind
                    laneProjectID: lane.modelData.projectID
                    scrolls: false
                    Layout.fillWidth: true
                }
            }
        }

        Text {
            objectName: "noLanes"
            visible: lanes.board.swimlaneList.length === 0
            text: "No cards match the current filter."
            color: Theme.secondaryText
            font.pixelSize: 13
            Layout.topMargin: 40
            Layout.bottomMargin: 40
            Layout.alignment: Qt.AlignHCenter
        }
    }
}
