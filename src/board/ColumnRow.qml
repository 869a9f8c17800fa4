pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Velto

// The status columns side by side, each an equal share of the width; hidden statuses are left out.
RowLayout {
    id: row
    required property BoardModel board
    required property TimerModel timer
    property string laneKind: "any"
    property string laneProjectID: ""
    property bool scrolls: true

    spacing: 11

    Repeater {
        model: BoardVocabulary.statusCount
        delegate: BoardColumnView {
            required property int index
            objectName: "column" + index
            visible: row.board.visibleStatuses.indexOf(index) >= 0
            board: row.board
            timer: row.timer
            status: index
            laneKind: row.laneKind
            laneProjectID: row.laneProjectID
            scrolls: row.scrolls
            Layout.fillWidth: true
            Layout.preferredWidth: 1 // equal shares: every column asks for the same
            // In a lane the row is as tall as its fullest column, and every column takes that height.
            Layout.fillHeight: true
        }
    }
}
