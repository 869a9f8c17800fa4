pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Velto

// Board or due-soon list, as one control of two segments; the chosen one stands out.
Rectangle {
    id: modeSwitch

    required property BoardModel model

    implicitWidth: segments.implicitWidth + 4
    implicitHeight: segments.implicitHeight + 4
    radius: 7
    color: Theme.secondaryFill

    Row {
        id: segments
        anchors.centerIn: parent
        spacing: 2

        Repeater {
            model: [
                { mode: BoardModel.Mode.board, label: "Board", symbol: "rectangle.split.3x1", name: "boardModeSegment" },
                { mode: BoardModel.Mode.dueSoon, label: "Due Soon", symbol: "calendar.badge.exclamationmark",
                  name: "dueSoonModeSegment" }
            ]

            delegate: AbstractButton {
                id: segment

                required property var modelData
                readonly property bool chosen: modeSwitch.model.mode === segment.modelData.mode

                objectName: segment.modelData.name
                leftPadding: 9
                rightPadding: 9
                topPadding: 3
                bottomPadding: 3
                Accessible.role: Accessible.RadioButton
                Accessible.name: segment.modelData.label
                Accessible.checked: segment.chosen
                onClicked: modeSwitch.model.mode = segment.modelData.mode
                // The arrow keys move between the two segments, as in any segmented control.
                Keys.onLeftPressed: modeSwitch.model.mode = BoardModel.Mode.board
                Keys.onRightPressed: modeSwitch.model.mode = BoardModel.Mode.dueSoon

                contentItem: Row {
                    spacing: 5

                    Symbol {
                        anchors.verticalCenter: parent.verticalCenter
                        name: segment.modelData.symbol
                        size: 12
                        color: segment.chosen ? Theme.primaryText : Theme.secondaryText
                    }

                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        text: segment.modelData.label
                        color: segment.chosen ? Theme.primaryText : Theme.secondaryText
                        font.pointSize: 12.5 * 0.75
                    }
                }

                background: Rectangle {
                    radius: 5
                    color: segment.chosen ? Theme.controlBackground : "transparent"
                    border.width: segment.visualFocus ? 1 : 0
                    border.color: Theme.accent
                }
            }
        }
    }
}
