import QtQuick
import QtQuick.Controls
import Velto

// A card's deadline in a few words on a capsule that turns red once it is overdue. The urgency is
// worked out when the chip is drawn, from the present moment and time zone; a completed card is
// never urgent.
Control {
    id: chip

    // A JS Date or a QDateTime; invalid, undefined or null when the card has no deadline.
    property var deadline
    property bool isComplete: false

    readonly property bool hasDeadline: chip.deadline !== undefined && chip.deadline !== null
                                        && !isNaN(chip.deadline)
    readonly property int urgency: chip.hasDeadline
                                   ? DeadlinePresenter.urgency(chip.deadline, chip.isComplete, DeadlinePresenter.today)
                                   : DeadlinePresenter.None
    readonly property bool isOverdue: chip.urgency === DeadlinePresenter.Overdue
    readonly property bool isNear: chip.urgency === DeadlinePresenter.Near
    readonly property string symbolName: chip.isOverdue ? "exclamationmark.triangle.fill"
                                                        : chip.isNear ? "clock.badge.exclamationmark" : "calendar"
    readonly property string words: chip.hasDeadline ? DeadlinePresenter.text(chip.deadline, DeadlinePresenter.today)
                                                     : ""
    readonly property string helpText: chip.hasDeadline ? DeadlinePresenter.helpText(chip.deadline) : ""
    // White on red reads the same in both appearances.
    readonly property color tint: chip.isOverdue ? "#FFFFFF"
                                                 : chip.isNear ? Theme.pick("#F2A06B", "#A03A12")
                                                               : Theme.pick("#E5C07B", "#7A5B12")
    readonly property color fill: chip.isOverdue ? Theme.pick("#D9503F", "#C0392B")
                                                 : chip.isNear ? Theme.pick("#3B2419", "#FBE9DE")
                                                               : Theme.pick("#2B2418", "#F7EFDD")

    visible: chip.hasDeadline
    leftPadding: 7
    rightPadding: 7
    topPadding: 2
    bottomPadding: 2
    hoverEnabled: true

    ToolTip.text: chip.helpText
    ToolTip.visible: chip.hovered
    ToolTip.delay: 500

    background: Rectangle {
        radius: 5
        color: chip.fill
    }

    contentItem: Row {
        spacing: 4

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: chip.symbolName
            size: 9
            color: chip.tint
        }

        Text {
            objectName: "deadlineChipText"
            anchors.verticalCenter: parent.verticalCenter
            text: chip.words
            font.pixelSize: 11
            font.weight: chip.isOverdue ? Font.DemiBold : Font.Normal
            color: chip.tint
        }
    }
}
